#include "vantrex/tool_handlers/next_steps/signals.h"

#include <string>
#include <utility>
#include <variant>

#include "vantrex/tool_handlers/next_steps/step.h"
#include "vantrex/tool_handlers/next_steps/usual.h"

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonList;
using values::JsonObject;

namespace {

// `reason` with "{hits}" and "{action}" replaced. Inserted text is not searched.
std::string filled_in(std::string_view reason, const Integer& hits, std::string_view action) {
  std::string text;
  for (std::size_t brace = 0; (brace = reason.find('{')) != std::string_view::npos;) {
    text += reason.substr(0, brace);
    reason.remove_prefix(brace);
    const bool is_hits = reason.starts_with("{hits}");
    const bool is_action = reason.starts_with("{action}");
    if (is_hits) text += hits.digits();
    if (is_action) text += action;
    if (!is_hits && !is_action) text += '{';
    reason.remove_prefix(is_hits ? 6 : is_action ? 8 : 1);
  }
  return text.append(reason);
}

// The step of `signal` for an answer with `hits` hits, or nothing.
std::optional<JsonObject> signal_step(const Signal& signal, const std::optional<Integer>& hits,
                                      std::string_view action, const AnswerView& answer) {
  if (!hits || !signal.condition.holds(*hits)) return std::nullopt;
  auto given = call_arguments(signal.call, answer);
  auto* args = std::get_if<JsonObject>(&given);
  if (args == nullptr) return std::nullopt;
  return step(signal.call.tool, filled_in(signal.call.reason.view(), *hits, action), std::move(*args));
}

}  // namespace

// `known` serves as the request: its fields have the names of the arguments.
std::optional<JsonObject> Signal::operator()(const JsonObject& known) const {
  return signal_step(*this, stated_integer(known["hits"]), known["what"].string().value_or(""),
                     AnswerView(kNoFields, &known));
}

JsonList _signals(const AnswerView& answer, std::string_view tool, std::optional<std::string_view> action) {
  JsonList steps;
  const SignalRow* row = answer.tables().signal_row(tool, action);
  if (row == nullptr || row->signal == nullptr) return steps;
  if (auto found = signal_step(*row->signal, answer.hit_count(), action.value_or(""), answer)) {
    steps.push_back(*std::move(found));
  }
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

#include "vantrex/tool_handlers/next_steps/usual.h"

#include <utility>

#include "vantrex/tool_handlers/next_steps/test_scope.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

constinit const JsonValue kNothing(nullptr);

// The value that `takes` finds in `item` of the hit list `list_name`, or null.
const JsonValue* taken_from_hit(const JsonValue& item, std::string_view list_name, Takes takes) {
  if (takes == Takes::path) {
    return item_path(item, list_name == "files" ? PlainStrings::are_paths : PlainStrings::ignored);
  }
  const JsonObject* hit = item.object();
  if (hit == nullptr) return nullptr;
  if (takes == Takes::component) return if_string((*hit)["name"]);
  return _is_code_hit(*hit) ? if_string((*hit)["fqn"]) : nullptr;
}

// The value that `takes` finds in the first hit that has it, or null.
const JsonValue* taken_from_hits(const AnswerView& answer, Takes takes) {
  for (std::size_t place = 0; place < _HIT_LISTS.size(); ++place) {
    const JsonList* list = answer.hit_lists()[place];
    if (list == nullptr) continue;
    for (const JsonValue& item : *list) {
      if (const JsonValue* value = taken_from_hit(item, _HIT_LISTS[place], takes)) return value;
    }
  }
  return nullptr;
}

}  // namespace

const JsonValue& _taken(const AnswerView& answer, Takes takes) {
  if (takes == Takes::query) return answer.requested_or_answered("query");
  const bool is_path = takes == Takes::path;
  if (is_path || takes == Takes::fqn) {
    const JsonValue& own = answer.response[is_path ? "file" : "fqn"];
    if (own.text() != nullptr) return own;
  }
  if (const JsonValue* value = taken_from_hits(answer, takes)) return *value;
  if (is_path || takes == Takes::fqn) {
    const JsonValue& requested = answer.arguments[text(takes)];
    if (requested.text() != nullptr) return requested;
  }
  return kNothing;
}

const FollowUps* usual_row(std::string_view tool, std::optional<std::string_view> action) noexcept {
  const FollowUps* row = detail::find_joined(NEXT_STEPS, tool, action);
  return row != nullptr ? row : NEXT_STEPS.find(tool);
}

std::variant<JsonObject, Lack> hint_arguments(const Hint& hint, const AnswerView& answer) {
  JsonObject args;
  args.reserve(2);
  if (hint.action) args.append("action", *hint.action);
  if (hint.takes == Takes::changed_files) {
    const JsonObject scope = _tests_scope(answer.response, answer.arguments);
    if (scope.empty()) return Lack::scope;
    for (const auto& [key, value] : scope) args.append(key, value);
  } else if (hint.takes) {
    if (answer.has_no_hits()) return Lack::hits;
    const JsonValue& value = _taken(answer, *hint.takes);
    if (value.is_null()) return Lack::argument;
    args.append(text(*hint.takes), value);
  }
  return args;
}

JsonList _usual(const AnswerView& answer, std::string_view tool, std::optional<std::string_view> action) {
  JsonList steps;
  const FollowUps* row = usual_row(tool, action);
  if (row == nullptr) return steps;
  steps.reserve(row->hints().size());
  for (const Hint* hint : row->hints()) {
    auto given = hint_arguments(*hint, answer);
    if (auto* args = std::get_if<JsonObject>(&given)) {
      steps.push_back(step(hint->tool, hint->reason, std::move(*args)));
    }
  }
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

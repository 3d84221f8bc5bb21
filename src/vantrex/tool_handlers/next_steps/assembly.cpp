#include "vantrex/tool_handlers/next_steps/assembly.h"

#include <algorithm>
#include <array>
#include <optional>
#include <unordered_set>
#include <utility>

#include "vantrex/tool_handlers/freshness.h"
#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/values/null_fields.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::canonical_text;
using values::compact_size;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

std::string malformed(std::size_t position, std::string_view field) {
  const std::string entry = "steps[" + std::to_string(position) + "]";
  return field.empty() ? entry + " is no object" : entry + " has no field \"" + std::string(field) + "\"";
}

const JsonValue& required(const JsonObject& step, std::string_view field, std::size_t position) {
  const JsonValue* value = step.find(field);
  if (value == nullptr) throw MalformedStep(position, field);
  return *value;
}

// The call of a step.
struct Call {
  Call(const JsonValue& step, std::size_t position) {
    const JsonObject* object = step.object();
    if (object == nullptr) throw MalformedStep(position, "");
    tool = &required(*object, "tool", position);
    args = &required(*object, "args", position);
  }

  std::string text() const { return canonical_text(*tool) + ',' + canonical_text(*args); }

  const JsonValue* tool;
  const JsonValue* args;
};

// Whether there are only a few steps and their arguments all have different sizes, so that no call repeats.
bool all_differ_in_size(const JsonList& steps) {
  constexpr std::size_t kFew = 2 * MAX_STEPS;
  if (steps.size() > kFew) return false;
  std::array<std::size_t, kFew> sizes;
  auto* end = sizes.begin();
  for (std::size_t position = 0; position < steps.size(); ++position) {
    const std::size_t size = compact_size(*Call(steps[position], position).args);
    if (std::find(sizes.begin(), end, size) != end) return false;
    *end++ = size;
  }
  return true;
}

// The steps for which `keeps(step, position)` is true.
template <typename Keeps>
JsonList filtered(JsonList steps, Keeps keeps) {
  JsonList kept;
  for (std::size_t position = 0; position < steps.size(); ++position) {
    JsonValue& step = *steps.item(position);
    if (keeps(std::as_const(step), position)) kept.push_back(std::move(step));
  }
  return kept;
}

JsonList served(JsonList steps, const ServedTools* serves) {
  if (serves == nullptr) return steps;
  return filtered(std::move(steps),
                  [serves](const JsonValue& step, std::size_t) { return is_served(step, serves); });
}

// Removes the tool's own steps from its answer. Empty if it gave none.
JsonList take_own_steps(JsonObject& response) {
  std::optional<JsonValue> own = response.remove("next_steps");
  JsonList* steps = own ? own->list() : nullptr;
  return steps == nullptr ? JsonList() : std::move(*steps);
}

}  // namespace

MalformedStep::MalformedStep(std::size_t position, std::string_view field)
    : std::invalid_argument(malformed(position, field)) {}

std::string call_text(const JsonValue& step, std::size_t position) {
  return Call(step, position).text();
}

JsonList _deduplicated(JsonList steps) {
  if (all_differ_in_size(steps)) return steps;
  std::unordered_set<std::string> seen;
  return filtered(std::move(steps), [&seen](const JsonValue& step, std::size_t position) {
    return seen.insert(call_text(step, position)).second;
  });
}

bool is_served(std::string_view tool, std::optional<std::string_view> action,
               const ServedTools* serves) noexcept {
  return serves == nullptr || serves->contains(tool, action);
}

bool is_served(const JsonValue& step, const ServedTools* serves) noexcept {
  const JsonObject& call = *step.object();
  return is_served(call["tool"].string().value_or(""), (*call["args"].object())["action"].string(), serves);
}

Choice choose_steps(Candidates candidates, const ServedTools* serves) {
  if (!candidates.own.empty()) return {std::move(candidates.own), Keep{1}};
  JsonList steps = served(std::move(candidates.signals), serves);
  JsonList usual = served(std::move(candidates.usual), serves);
  const Keep keep{std::clamp(steps.size(), std::size_t{1}, MAX_STEPS)};
  if (steps.empty()) std::swap(steps, usual);
  for (std::size_t position = 0; position < usual.size(); ++position) {
    steps.push_back(std::move(*usual.item(position)));
  }
  steps = _deduplicated(std::move(steps));
  steps.truncate(MAX_STEPS);
  return {std::move(steps), keep};
}

void prepare(JsonObject& response, JsonValue freshness) {
  values::drop_null_fields(response);
  add_freshness(response, std::move(freshness));
}

Candidates candidate_steps(JsonObject& response, std::string_view tool_name, const FinishOptions& options) {
  Candidates candidates{.own = take_own_steps(response)};
  if (!candidates.own.empty()) return candidates;
  const AnswerView answer(response, options.arguments);
  candidates.signals = _signals(answer, tool_name, options.action);
  candidates.usual = _usual(answer, tool_name, options.action);
  return candidates;
}

JsonObject& _add_next_steps(JsonObject& response, std::string_view tool_name, const FinishOptions& options) {
  Choice choice = choose_steps(candidate_steps(response, tool_name, options), options.serves);
  JsonList steps = _within_share(response, std::move(choice.steps), choice.keep);
  if (!steps.empty()) response.append("next_steps", std::move(steps));
  return response;
}

}  // namespace vantrex::tool_handlers::next_steps

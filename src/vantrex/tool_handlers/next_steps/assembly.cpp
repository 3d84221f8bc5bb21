#include "vantrex/tool_handlers/next_steps/assembly.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::canonical_text;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::TextLiteral;

namespace {

constexpr TextLiteral kNextSteps = "next_steps";

std::string malformed(std::size_t position, std::string_view field) {
  const std::string entry = "steps[" + std::to_string(position) + "]";
  return field.empty() ? entry + " is no object" : entry + " has no field \"" + std::string(field) + "\"";
}

const JsonValue& required(const JsonObject& step, std::string_view field, std::size_t position) {
  const JsonValue* value = step.find(field);
  if (value == nullptr) throw MalformedStep(position, field);
  return *value;
}

// What two steps have in common exactly when they make the same call.
std::string call_key(const JsonValue& entry, std::size_t position) {
  const JsonObject* step = entry.object();
  if (step == nullptr) throw MalformedStep(position, "");
  return canonical_text(required(*step, "tool", position)) + ',' +
         canonical_text(required(*step, "args", position));
}

// The steps that the tool itself gave, taken out of its answer; empty when it
// gave none.
JsonList take_own_steps(JsonObject& response) {
  std::optional<JsonValue> own = response.remove(kNextSteps);
  JsonList* steps = own ? own->list() : nullptr;
  return steps == nullptr ? JsonList() : std::move(*steps);
}

}  // namespace

MalformedStep::MalformedStep(std::size_t position, std::string_view field)
    : std::invalid_argument(malformed(position, field)) {}

JsonList _deduplicated(JsonList steps) {
  std::unordered_set<std::string> seen;
  JsonList kept;
  for (std::size_t position = 0; position < steps.size(); ++position) {
    if (seen.insert(call_key(steps[position], position)).second) {
      kept.push_back(std::move(steps.mutable_item(position)));
    }
  }
  return kept;
}

Choice choose_steps(JsonList signals, JsonList usual) {
  const Keep keep{std::clamp(signals.size(), std::size_t{1}, MAX_STEPS)};
  JsonList steps = std::move(signals);
  for (std::size_t position = 0; position < usual.size(); ++position) {
    steps.push_back(std::move(usual.mutable_item(position)));
  }
  steps = _deduplicated(std::move(steps));
  steps.truncate(MAX_STEPS);
  return {std::move(steps), keep};
}

JsonObject& _add_next_steps(JsonObject& response, std::string_view tool_name, StepOptions options) {
  Choice choice{take_own_steps(response), Keep{1}};
  if (choice.steps.empty()) {
    const JsonObject none;
    const JsonObject& given = options.arguments == nullptr ? none : *options.arguments;
    JsonList signals = _signals(response, tool_name, options.action, given);
    choice = choose_steps(std::move(signals), _usual(response, tool_name, options.action, given));
  }
  JsonList steps = _within_share(response, std::move(choice.steps), choice.keep);
  if (!steps.empty()) response.set(kNextSteps, std::move(steps));
  return response;
}

}  // namespace vantrex::tool_handlers::next_steps

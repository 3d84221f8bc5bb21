#include "vantrex/tool_handlers/next_steps/assembly.h"

#include <algorithm>
#include <array>
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

// The call that a step makes.
struct Call {
  const JsonValue* tool = nullptr;
  const JsonValue* args = nullptr;

  // Equal for two calls exactly when they are the same.
  std::string key() const { return canonical_text(*tool) + ',' + canonical_text(*args); }
};

Call call_of(const JsonList& steps, std::size_t position) {
  const JsonObject* step = steps[position].object();
  if (step == nullptr) throw MalformedStep(position, "");
  return {&required(*step, "tool", position), &required(*step, "args", position)};
}

bool are_other_texts(const JsonValue& a, const JsonValue& b) noexcept {
  return a.text() != nullptr && b.text() != nullptr && *a.text() != *b.text();
}

// Whether the calls name other tools, or other texts for the same argument.
bool differ_in_text(const Call& a, const Call& b) noexcept {
  if (are_other_texts(*a.tool, *b.tool)) return true;
  const JsonObject* given = a.args->object();
  const JsonObject* others = b.args->object();
  return given != nullptr && others != nullptr &&
         std::any_of(given->begin(), given->end(), [&](const auto& field) {
           return are_other_texts(field.value, (*others)[field.key.view()]);
         });
}

// Whether a look at their texts tells every two of a few calls apart.
bool all_differ_in_text(const JsonList& steps) {
  constexpr std::size_t kFew = 2 * MAX_STEPS;
  if (steps.size() > kFew) return false;
  std::array<Call, kFew> calls;
  auto* end = calls.begin();
  for (std::size_t position = 0; position < steps.size(); ++position) {
    const Call call = call_of(steps, position);
    if (!std::all_of(calls.begin(), end, [&](const Call& other) { return differ_in_text(call, other); }))
      return false;
    *end++ = call;
  }
  return true;
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
  if (all_differ_in_text(steps)) return steps;
  std::unordered_set<std::string> seen;
  JsonList kept;
  for (std::size_t position = 0; position < steps.size(); ++position) {
    if (seen.insert(call_of(steps, position).key()).second) {
      kept.push_back(std::move(steps.mutable_item(position)));
    }
  }
  return kept;
}

Choice choose_steps(JsonList signals, JsonList usual) {
  const Keep keep{std::clamp(signals.size(), std::size_t{1}, MAX_STEPS)};
  JsonList steps = std::move(signals);
  if (steps.empty()) std::swap(steps, usual);
  for (std::size_t position = 0; position < usual.size(); ++position) {
    steps.push_back(std::move(usual.mutable_item(position)));
  }
  steps = _deduplicated(std::move(steps));
  steps.truncate(MAX_STEPS);
  return {std::move(steps), keep};
}

Choice choose_steps(Candidates candidates) {
  if (!candidates.own.empty()) return {std::move(candidates.own), Keep{1}};
  return choose_steps(std::move(candidates.signals), std::move(candidates.usual));
}

Candidates candidate_steps(JsonObject& response, std::string_view tool_name, StepOptions options) {
  Candidates candidates{.own = take_own_steps(response)};
  if (!candidates.own.empty()) return candidates;
  const JsonObject none;
  const JsonObject& given = options.arguments == nullptr ? none : *options.arguments;
  candidates.signals = _signals(response, tool_name, options.action, given);
  candidates.usual = _usual(response, tool_name, options.action, given);
  return candidates;
}

JsonObject& _add_next_steps(JsonObject& response, std::string_view tool_name, StepOptions options) {
  Choice choice = choose_steps(candidate_steps(response, tool_name, options));
  JsonList steps = _within_share(response, std::move(choice.steps), choice.keep);
  if (!steps.empty()) response.append(kNextSteps, std::move(steps));
  return response;
}

}  // namespace vantrex::tool_handlers::next_steps

#include "vantrex/tool_handlers/next_steps/budget.h"

#include <utility>

#include "vantrex/tool_handlers/next_steps/hint_walk.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {

using values::compact_size;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

template <typename Value>
std::size_t hint_size(const Value& value) {
  std::size_t bytes = 0;
  HintWalk walk([&bytes](const JsonValue& hint, const auto& /*levels*/) { bytes += _encoded_size(hint); });
  walk.open(value);
  walk.finish();
  return bytes;
}

}  // namespace

std::size_t _encoded_size(const JsonValue& value) {
  return compact_size(value);
}

std::size_t _hint_size(const JsonValue& value) {
  return hint_size(value);
}
std::size_t _hint_size(const JsonObject& object) {
  return hint_size(object);
}

AddedBytes::AddedBytes(const JsonList& steps) {
  for (const JsonValue& step : steps) add(compact_size(step));
}

JsonList _within_share(const JsonObject& response, JsonList steps, Keep keep) {
  if (steps.size() <= keep.steps) return steps;
  const std::size_t hints = _hint_size(response);
  AddedBytes added(steps);

  // The room grows with the answer, so steps that fit a lower bound of its size fit the answer. The bound 0
  // is tried first; it is enough for most answers. The others are measured, but only up to the size whose
  // share is enough for all steps. A smaller answer is measured exactly.
  constexpr auto kEnough = static_cast<std::size_t>(1 / HINT_SHARE) + 1;
  static_assert(HINT_SHARE * kEnough > 1);
  if (AnswerBytes{0, hints}.over_room(added.bytes()) <= 0) return steps;
  const AnswerBytes answer{compact_size(response, kEnough * (hints + added.bytes())), hints};

  std::size_t count = steps.size();
  while (count > keep.steps && answer.over_room(added.bytes()) > 0)
    added.take_back(compact_size(steps[--count]));
  steps.truncate(count);
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

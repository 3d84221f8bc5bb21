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

std::size_t hint_size(const JsonObject* object, const JsonList* list) {
  std::size_t bytes = 0;
  visit_hints(object, list,
              [&](const JsonValue& hint, const auto& /*levels*/) { bytes += _encoded_size(hint); });
  return bytes;
}

}  // namespace

std::size_t _encoded_size(const JsonValue& value) {
  return compact_size(value);
}

std::size_t _hint_size(const JsonValue& value) {
  return hint_size(value.object(), value.list());
}
std::size_t _hint_size(const JsonObject& object) {
  return hint_size(&object, nullptr);
}

AddedBytes::AddedBytes(const JsonList& steps) {
  for (const JsonValue& step : steps) add(compact_size(step));
}

JsonList _within_share(const JsonObject& response, JsonList steps, Keep keep) {
  if (steps.size() <= keep.steps) return steps;
  const std::size_t hints = _hint_size(response);
  AddedBytes added(steps);

  // The room grows with the answer, so steps that fit beside nothing need no measuring. Most do.
  if (AnswerBytes{0, hints}.over_room(added.bytes()) <= 0) return steps;
  const AnswerBytes answer{compact_size(response), hints};

  std::size_t count = steps.size();
  while (count > keep.steps && answer.over_room(added.bytes()) > 0)
    added.take_back(compact_size(steps[--count]));
  steps.truncate(count);
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

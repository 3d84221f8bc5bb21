#include "vantrex/tool_handlers/next_steps/budget.h"

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

JsonList _within_share(const JsonObject& response, JsonList steps, Keep keep) {
  std::size_t count = steps.size();
  if (count <= keep.steps) return steps;
  const std::size_t hints = _hint_size(response);
  std::size_t step_bytes = 0;
  for (const JsonValue& step : steps) step_bytes += compact_size(step);

  // The room grows with the answer, so steps that fit an answer of 0 bytes need no measuring. Most do.
  if (AnswerBytes{0, hints}.over_room(added_bytes(step_bytes, count)) <= 0) return steps;
  const AnswerBytes answer{compact_size(response), hints};

  while (count > keep.steps && answer.over_room(added_bytes(step_bytes, count)) > 0) {
    step_bytes -= compact_size(steps[--count]);
  }
  steps.truncate(count);
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

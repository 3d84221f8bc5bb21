#include "vantrex/tool_handlers/next_steps/finishing.h"

#include <utility>

#include "vantrex/tool_handlers/freshness.h"
#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/snapshot.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonObject;
using values::JsonValue;
using values::NullFields;

JsonValue without_null_fields(const JsonValue& value) {
  return values::snapshot(value, NullFields::drop);
}
JsonObject without_null_fields(const JsonObject& object) {
  return values::snapshot(object, NullFields::drop);
}

JsonObject finish_answer(const JsonObject& response, std::string_view tool_name, FinishOptions options) {
  JsonObject finished = values::measured_snapshot(response, NullFields::drop, kHintKeys);
  add_freshness(finished, std::move(options.freshness));
  _add_next_steps(finished, tool_name, {.action = options.action, .arguments = options.arguments});
  return finished;
}

}  // namespace vantrex::tool_handlers::next_steps

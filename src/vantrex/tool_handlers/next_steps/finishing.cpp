#include "vantrex/tool_handlers/next_steps/finishing.h"

#include <utility>

#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/values/null_fields.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonObject;
using values::JsonValue;

JsonValue without_null_fields(JsonValue value) {
  values::drop_null_fields(value);
  return value;
}
JsonObject without_null_fields(JsonObject object) {
  values::drop_null_fields(object);
  return object;
}

JsonObject finish_answer(JsonObject response, std::string_view tool_name, FinishOptions options) {
  prepare(response, std::move(options.freshness));
  _add_next_steps(response, tool_name, options);
  return response;
}

}  // namespace vantrex::tool_handlers::next_steps

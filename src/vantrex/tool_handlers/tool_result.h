// The text of a tool result, as the server sends it.
//
// A pure function without state.
#pragma once

#include <string>

#include "vantrex/export.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers {

/// The compact UTF-8 JSON text of `answer`. Throws std::bad_alloc.
NEXT_STEPS_API std::string tool_result_text(const values::JsonObject& answer);

}  // namespace vantrex::tool_handlers

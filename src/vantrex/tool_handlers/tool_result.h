// The text of a tool result, as the server sends it.
//
// A pure function without state.
#pragma once

#include <string>

#include "vantrex/values/json_value.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers {

/// The compact UTF-8 JSON text of `answer`. Throws std::bad_alloc.
inline std::string tool_result_text(const values::JsonObject& answer) {
  return values::compact_text(answer);
}

}  // namespace vantrex::tool_handlers

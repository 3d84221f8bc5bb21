#include "vantrex/tool_handlers/tool_result.h"

#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers {

std::string tool_result_text(const values::JsonObject& answer) {
  return values::compact_text(answer);
}

}  // namespace vantrex::tool_handlers

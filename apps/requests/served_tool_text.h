// The text of a tool or an action: "symbol" or "symbol:detail".
#pragma once

#include <string_view>

#include "requests/names.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace next_steps_requests {

// Returns the tool or the action that `text` names. Names consist of ASCII letters, digits, "_", "-" and ".".
// Throws std::invalid_argument for any other text, and std::bad_alloc.
module::ServedTool read_served_tool(std::string_view text);

}  // namespace next_steps_requests

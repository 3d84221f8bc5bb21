#include "requests/served_tool_text.h"

#include <stdexcept>
#include <string>

#include "vantrex/tool_handlers/next_steps/rules.h"

namespace next_steps_requests {

namespace {

bool is_name(std::string_view text) {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-.";
  return !text.empty() && text.find_first_not_of(kLetters) == std::string_view::npos;
}

}  // namespace

module::ServedTool read_served_tool(std::string_view text) {
  const auto [tool, action] = module::split_key(text);
  if (!is_name(tool) || (action && !is_name(*action))) {
    throw std::invalid_argument("\"" + std::string(text) + "\" is neither TOOL nor TOOL:ACTION");
  }
  return {.tool = std::string(tool), .action = action ? module::OptionalText(*action) : nullptr};
}

}  // namespace next_steps_requests

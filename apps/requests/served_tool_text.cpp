#include "requests/served_tool_text.h"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace next_steps_requests {

namespace {

bool is_name(std::string_view text) {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-.";
  return !text.empty() && text.find_first_not_of(kLetters) == std::string_view::npos;
}

}  // namespace

module::ServedTool read_served_tool(std::string_view text) {
  const std::size_t colon = text.find(':');
  const std::string_view tool = text.substr(0, colon);
  const bool has_action = colon != std::string_view::npos;
  const std::string_view action = has_action ? text.substr(colon + 1) : "";
  if (!is_name(tool) || (has_action && !is_name(action))) {
    throw std::invalid_argument("\"" + std::string(text) + "\" is neither TOOL nor TOOL:ACTION");
  }
  return {.tool = std::string(tool), .action = has_action ? module::OptionalText(action) : nullptr};
}

}  // namespace next_steps_requests

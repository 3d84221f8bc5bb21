#include "next_steps/serves_option.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include <CLI/CLI.hpp>

namespace next_steps_program {

namespace module = vantrex::tool_handlers::next_steps;

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

namespace {

// Returns the entries of a list such as "search,symbol:detail,files".
std::vector<module::ServedTool> read_served_tools(std::string_view text) {
  std::vector<module::ServedTool> tools;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    tools.push_back(read_served_tool(text.substr(begin, end - begin)));
    begin = end + 1;
  }
  return tools;
}

}  // namespace

void ServesOption::add_to(CLI::App& parser) {
  const auto parse = [this](const std::string& text) {
    try {
      tools_ = read_served_tools(text);
    } catch (const std::invalid_argument& error) {
      throw CLI::ValidationError("--serves", error.what());
    }
    set_.emplace();
    for (const module::ServedTool& each : tools_) set_->add(each);
  };
  parser
      .add_option_function<std::string>("--serves", parse,
                                        "What the server has: whole tools, and single actions")
      ->type_name("TOOL[:ACTION],...");
}

}  // namespace next_steps_program

#include "next_steps/serves_option.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "requests/served_tool_text.h"

namespace next_steps_program {

namespace {

// Returns the entries of a list such as "search,symbol:detail,files".
std::vector<module::ServedTool> read_served_tools(std::string_view text) {
  std::vector<module::ServedTool> tools;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    tools.push_back(requests::read_served_tool(text.substr(begin, end - begin)));
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

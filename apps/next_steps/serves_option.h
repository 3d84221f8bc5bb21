// The option --serves: which tools and actions the server has.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace next_steps_program {

// The tool or action that `text` names: "symbol" or "symbol:detail". Throws
// std::invalid_argument for what names none, and std::bad_alloc.
vantrex::tool_handlers::next_steps::ServedTool read_served_tool(std::string_view text);

// --serves, a list of these with commas between.
class ServesOption {
 public:
  // The option is parsed into this object, which must outlive `parser`'s use.
  void add_to(CLI::App& parser);

  // The set, as long as this object; null when the option was not given.
  const vantrex::tool_handlers::next_steps::ServedTools* set() const noexcept {
    return set_ ? &*set_ : nullptr;
  }
  // The list that it was made of.
  const std::vector<vantrex::tool_handlers::next_steps::ServedTool>& tools() const noexcept { return tools_; }

 private:
  std::vector<vantrex::tool_handlers::next_steps::ServedTool> tools_;
  std::optional<vantrex::tool_handlers::next_steps::ServedTools> set_;
};

}  // namespace next_steps_program

// The option --serves: which tools and actions the server has.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace next_steps_program {

// The tools and actions that `text` lists: "search,symbol:detail,files". Throws
// std::invalid_argument for what is no such list, and std::bad_alloc.
std::vector<vantrex::tool_handlers::next_steps::ServedTool> read_served_tools(std::string_view text);

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

// The option --serves: which tools and actions the server has.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace CLI {
class App;
}

namespace next_steps_program {

// Returns the tool or the action that `text` names: "symbol" or "symbol:detail". Names consist of ASCII
// letters, digits, "_", "-" and ".". Throws std::invalid_argument for any other text, and std::bad_alloc.
vantrex::tool_handlers::next_steps::ServedTool read_served_tool(std::string_view text);

// The option --serves, a list separated by commas.
class ServesOption {
 public:
  // Adds the option to `parser`, which keeps a reference to this object.
  void add_to(CLI::App& parser);

  // The set, owned by this object; null when the option was not given.
  const vantrex::tool_handlers::next_steps::ServedTools* set() const noexcept {
    return set_ ? &*set_ : nullptr;
  }
  // The entries of the option, in their order.
  const std::vector<vantrex::tool_handlers::next_steps::ServedTool>& tools() const noexcept { return tools_; }

 private:
  std::vector<vantrex::tool_handlers::next_steps::ServedTool> tools_;
  std::optional<vantrex::tool_handlers::next_steps::ServedTools> set_;
};

}  // namespace next_steps_program

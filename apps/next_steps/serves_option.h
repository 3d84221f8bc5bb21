// The option --serves: which tools and actions the server has.
#pragma once

#include <optional>
#include <vector>

#include "next_steps/names.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace CLI {
class App;
}

namespace next_steps_program {

// The option --serves, a list separated by commas.
class ServesOption {
 public:
  // Adds the option to `parser`, which keeps a reference to this object.
  void add_to(CLI::App& parser);

  // The set, owned by this object; null when the option was not given.
  const module::ServedTools* set() const noexcept { return set_ ? &*set_ : nullptr; }
  // The entries of the option, in their order.
  const std::vector<module::ServedTool>& tools() const noexcept { return tools_; }

 private:
  std::vector<module::ServedTool> tools_;
  std::optional<module::ServedTools> set_;
};

}  // namespace next_steps_program

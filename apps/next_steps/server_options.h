// The options about the server: --serves and --catalogue.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "next_steps/names.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace CLI {
class App;
}

namespace next_steps_program {

class ServerOptions {
 public:
  // Adds the options to `parser`, which keeps a reference to this object.
  void add_to(CLI::App& parser);

  // The tools that the server has, owned by this object; null without --serves.
  const module::ServedTools* serves() const noexcept { return serves_ ? &*serves_ : nullptr; }
  // The entries of --serves, in their order.
  const std::vector<module::ServedTool>& tools() const noexcept { return tools_; }

  // The server's own catalogue, owned by this object; null without --catalogue. Reads its file at the first
  // call. Throws InputRejected, IoFailed and std::bad_alloc.
  const module::Catalogue* catalogue();

 private:
  std::vector<module::ServedTool> tools_;
  std::optional<module::ServedTools> serves_;
  std::string catalogue_file_;
  std::optional<module::Catalogue> catalogue_;
};

}  // namespace next_steps_program

#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace vantrex::tool_handlers::next_steps {

ServedTools::ServedTools(std::initializer_list<ServedTool> tools) {
  for (const ServedTool& each : tools) add(each);
}

void ServedTools::add(const ServedTool& served) {
  Actions& actions = tools_[served.tool];
  const std::optional<std::string_view> action = served.action;
  if (action) {
    actions.some.emplace(*action);
  } else {
    actions.all = true;
  }
}

bool ServedTools::contains(std::string_view tool, std::optional<std::string_view> action) const noexcept {
  const auto found = tools_.find(tool);
  if (found == tools_.end()) return false;
  return found->second.all || (action && found->second.some.contains(*action));
}

}  // namespace vantrex::tool_handlers::next_steps

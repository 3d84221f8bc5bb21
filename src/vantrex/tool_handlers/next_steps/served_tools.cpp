#include "vantrex/tool_handlers/next_steps/served_tools.h"

#include <algorithm>
#include <utility>

namespace vantrex::tool_handlers::next_steps {

namespace {

using Key = std::pair<std::string_view, std::optional<std::string_view>>;

Key key_of(const ServedTool& served) noexcept {
  return {served.tool, served.action};
}

bool holds(const std::vector<ServedTool>& entries, const Key& key) noexcept {
  return std::ranges::binary_search(entries, key, {}, key_of);
}

}  // namespace

ServedTools::ServedTools(std::vector<ServedTool> tools) : entries_(std::move(tools)) {
  std::ranges::sort(entries_, {}, key_of);
  const auto equal = [](const ServedTool& a, const ServedTool& b) { return key_of(a) == key_of(b); };
  entries_.erase(std::unique(entries_.begin(), entries_.end(), equal), entries_.end());
}

void ServedTools::add(const ServedTool& served) {
  const Key key = key_of(served);
  if (!holds(entries_, key)) entries_.insert(std::ranges::lower_bound(entries_, key, {}, key_of), served);
}

bool ServedTools::contains(std::string_view tool, std::optional<std::string_view> action) const noexcept {
  return holds(entries_, {tool, std::nullopt}) || (action && holds(entries_, {tool, action}));
}

}  // namespace vantrex::tool_handlers::next_steps

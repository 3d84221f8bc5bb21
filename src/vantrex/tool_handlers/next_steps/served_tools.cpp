#include "vantrex/tool_handlers/next_steps/served_tools.h"

#include <algorithm>
#include <utility>

namespace vantrex::tool_handlers::next_steps {

namespace {

using Key = std::pair<std::string_view, std::optional<std::string_view>>;

Key key_of(const ServedTool& served) noexcept {
  return {served.tool, served.action};
}

// The first entry that is not less than `key`.
template <typename Entries>
auto first_from(Entries& entries, const Key& key) noexcept {
  return std::lower_bound(entries.begin(), entries.end(), key,
                          [](const ServedTool& entry, const Key& wanted) { return key_of(entry) < wanted; });
}

bool holds(const std::vector<ServedTool>& entries, const Key& key) noexcept {
  const auto entry = first_from(entries, key);
  return entry != entries.end() && key_of(*entry) == key;
}

}  // namespace

ServedTools::ServedTools(std::vector<ServedTool> tools) : entries_(std::move(tools)) {
  std::sort(entries_.begin(), entries_.end(),
            [](const ServedTool& a, const ServedTool& b) { return key_of(a) < key_of(b); });
  const auto equal = [](const ServedTool& a, const ServedTool& b) { return key_of(a) == key_of(b); };
  entries_.erase(std::unique(entries_.begin(), entries_.end(), equal), entries_.end());
}

void ServedTools::add(const ServedTool& served) {
  if (!holds(entries_, key_of(served))) entries_.insert(first_from(entries_, key_of(served)), served);
}

bool ServedTools::contains(std::string_view tool, std::optional<std::string_view> action) const noexcept {
  return holds(entries_, {tool, std::nullopt}) || (action && holds(entries_, {tool, action}));
}

}  // namespace vantrex::tool_handlers::next_steps

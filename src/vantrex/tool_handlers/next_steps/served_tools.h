// ServedTools: the set of tools and actions that a server has.
//
// Purpose: a server that lacks some tools names those that it has, so that no signal or usual follow-up calls
// another one. Create one set for the server, before the first answer.
//
// Ownership: owns its texts, which may be any bytes. Threads: safe for concurrent reads.
#pragma once

#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/export.h"
#include "vantrex/tool_handlers/next_steps/optional_text.h"

namespace vantrex::tool_handlers::next_steps {

/// A tool with all its actions, or one action of a tool.
struct ServedTool {
  std::string tool;               ///< "symbol"
  OptionalText action = nullptr;  ///< absent for the tool with all its actions
};

/// A set of tools and actions.
class NEXT_STEPS_API ServedTools {
 public:
  /// The empty set: a server without tools.
  ServedTools() = default;
  /// The set of `tools`: {{"search"}, {"symbol", "detail"}, {"symbol", "callers"}}. Throws std::bad_alloc.
  ServedTools(std::initializer_list<ServedTool> tools) : ServedTools(std::vector(tools)) {}
  /// The same. Sorts the entries.
  explicit ServedTools(std::vector<ServedTool> tools);

  /// Adds a tool or an action, in time linear in the number of entries. Throws std::bad_alloc.
  void add(const ServedTool& served);

  /// Whether the server has the action, or, without an action, the tool itself.
  bool contains(std::string_view tool, std::optional<std::string_view> action) const noexcept;

  /// The tools and actions, sorted; a tool comes before its actions.
  std::span<const ServedTool> entries() const noexcept { return entries_; }

 private:
  std::vector<ServedTool> entries_;
};

}  // namespace vantrex::tool_handlers::next_steps

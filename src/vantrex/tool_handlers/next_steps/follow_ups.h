// The module's usual follow-ups: the calls that usually follow an answer of each tool and action.
//
// Ownership: constant data, initialised at compile time. Threads: safe for concurrent use.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

#include "vantrex/values/text.h"

namespace vantrex::tool_handlers::next_steps {

/// The kind of argument that a hint takes from the answer.
enum class Takes : std::uint8_t { fqn, path, query, component, changed_files };

namespace detail {

// Indexed by Takes.
inline constexpr std::array<values::TextLiteral, 5> kArgumentNames = {"fqn", "path", "query", "component",
                                                                      "changed_files"};

}  // namespace detail

/// The name of the argument: "fqn", "path" and so on.
constexpr const values::TextLiteral& text(Takes takes) {
  return detail::kArgumentNames[static_cast<std::size_t>(takes)];
}

/// One usual follow-up. Immutable; its texts are literals.
class Hint {
 public:
  /// A call without an action and without arguments.
  consteval Hint(values::TextLiteral tool_name, values::TextLiteral why) : tool(tool_name), reason(why) {}
  /// A call with an action, and maybe an argument from the answer.
  consteval Hint(values::TextLiteral tool_name, values::TextLiteral why, values::TextLiteral tool_action,
                 std::optional<Takes> argument = std::nullopt)
      : tool(tool_name), reason(why), action(tool_action), takes(argument) {}
  /// A call with an argument from the answer, to a tool without actions.
  consteval Hint(values::TextLiteral tool_name, values::TextLiteral why, std::nullopt_t /*action*/,
                 Takes argument)
      : tool(tool_name), reason(why), takes(argument) {}

  const values::TextLiteral tool;                   ///< the tool to call
  const values::TextLiteral reason;                 ///< the reason, in a few words
  const std::optional<values::TextLiteral> action;  ///< absent for a tool without actions
  /// The argument that the step takes from the answer. Without it the answer gets no such step.
  const std::optional<Takes> takes;

  /// Compares all members.
  friend constexpr bool operator==(const Hint&, const Hint&) = default;
};

/// A hint that several rows share: the details of a symbol.
inline constexpr Hint _DETAIL{"symbol", "Details of the best hit", "detail", Takes::fqn};
/// A hint that several rows share: the callers of a symbol.
inline constexpr Hint _CALLERS{"symbol", "Who calls the best hit", "callers", Takes::fqn};
/// A hint that several rows share: the references to a symbol.
inline constexpr Hint _REFERENCES{"symbol", "Every use of it", "references", Takes::fqn};
/// A hint that several rows share: the symbols of a file.
inline constexpr Hint _FILE_SYMBOLS{"file", "Symbols of the first file", "symbols", Takes::path};
/// A hint that several rows share: the tests for changed files.
inline constexpr Hint _CHANGED_TESTS{"tests", "Tests to run for these files", "recommended",
                                     Takes::changed_files};

namespace detail {

// Hints that only one row uses.
inline constexpr Hint kComponents{"architecture", "The components of the code", "components"};
inline constexpr Hint kFileTests{"tests", "Its file's tests", "for_file", Takes::path};
inline constexpr Hint kImports{"file", "What it imports", "imports", Takes::path};
inline constexpr Hint kDependencies{"architecture", "What it depends on", "dependencies", Takes::component};
inline constexpr Hint kDelta{"context", "Context for reviewing the changes", "delta"};
inline constexpr Hint kNoReferences{"symbol", "Check it has no references", "references", Takes::fqn};

}  // namespace detail

/// One row of the usual follow-ups. Its key is a tool, or a tool and an action joined by a colon.
class FollowUps {
 public:
  /// The maximum number of hints of one row.
  static constexpr std::size_t kMaxHints = 3;

  /// `hints` has at most kMaxHints pointers, none null. The row refers to them.
  consteval FollowUps(std::string_view row_key, std::initializer_list<const Hint*> hints)
      : key(row_key), count_(hints.size()) {
    std::size_t at = 0;
    for (const Hint* hint : hints) hints_[at++] = hint;
  }

  const std::string_view key;  ///< "symbol" or "symbol:callers"

  /// The hints in the order of their steps; none is null.
  constexpr std::span<const Hint* const> hints() const noexcept { return {hints_.data(), count_}; }

 private:
  std::array<const Hint*, kMaxHints> hints_{};
  std::size_t count_;
};

/// The usual follow-ups, one row for each tool or tool and action.
class FollowUpTable {
 public:
  /// The number of rows.
  static constexpr std::size_t kRows = 20;

  /// The keys of `rows` are unique.
  consteval explicit FollowUpTable(const std::array<FollowUps, kRows>& rows) : rows_(rows) {}

  /// The first row, a FollowUps.
  constexpr auto begin() const noexcept { return rows_.begin(); }
  /// One past the last row.
  constexpr auto end() const noexcept { return rows_.end(); }

  /// The row with the key `key`, or null.
  constexpr const FollowUps* find(std::string_view key) const noexcept {
    for (const FollowUps& row : rows_) {
      if (row.key == key) return &row;
    }
    return nullptr;
  }

 private:
  std::array<FollowUps, kRows> rows_;
};

/// The usual follow-ups of the module.
inline constexpr FollowUpTable NEXT_STEPS{{{
    {"status", {&detail::kComponents}},
    {"search", {&_DETAIL, &_CALLERS}},
    {"search:code", {&_FILE_SYMBOLS}},
    {"symbol", {&_REFERENCES, &_CALLERS}},
    {"symbol:detail", {&_CALLERS, &_REFERENCES, &detail::kFileTests}},
    {"symbol:callers", {&_REFERENCES}},
    {"symbol:references", {&_CALLERS}},
    {"file", {&_DETAIL, &detail::kImports}},
    {"file:imports", {&_FILE_SYMBOLS}},
    {"file:related", {&_FILE_SYMBOLS}},
    {"files", {&_FILE_SYMBOLS}},
    {"architecture", {&detail::kDependencies}},
    {"git", {&_CHANGED_TESTS, &detail::kDelta}},
    {"git:hotspots", {&_FILE_SYMBOLS}},
    {"quality", {&detail::kNoReferences}},
    {"quality:impact", {&_CHANGED_TESTS}},
    {"quality:circular_deps", {}},
    {"quality:duplicates", {&_DETAIL}},
    {"context", {&_CHANGED_TESTS}},
    {"tests", {&_FILE_SYMBOLS}},
}}};

}  // namespace vantrex::tool_handlers::next_steps

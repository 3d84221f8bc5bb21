// The step record and the catalogue of usual follow-ups.
//
// Purpose: `step` makes one step. `NEXT_STEPS` lists the calls that usually follow an answer of each tool and
// action. The constants limit how many steps an answer gets and how many bytes they may take.
//
// Ownership: everything except the result of `step` is constant data, initialised at compile time. Threads:
// safe for concurrent use.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string_view>

#include "vantrex/export.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

/// A new step: the object {"tool": tool, "args": args, "reason": reason}. Ill-formed UTF-8 in `tool` and
/// `reason` is replaced by U+FFFD. Throws only std::bad_alloc.
NEXT_STEPS_API values::JsonObject step(const values::TextArgument& tool, const values::TextArgument& reason,
                                       values::JsonObject args = {});

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
  /// A call without arguments.
  consteval Hint(values::TextLiteral tool_name, values::TextLiteral why, values::TextLiteral tool_action)
      : tool(tool_name), reason(why), action(tool_action) {}
  /// A call with an action and an argument from the answer.
  consteval Hint(values::TextLiteral tool_name, values::TextLiteral why, values::TextLiteral tool_action,
                 Takes argument)
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

// Whether `key` equals `tool`, a colon and `action`. Both may be any bytes.
constexpr bool is_joined_key(std::string_view key, std::string_view tool, std::string_view action) noexcept {
  return key.size() == tool.size() + 1 + action.size() && key.starts_with(tool) && key[tool.size()] == ':' &&
         key.ends_with(action);
}

// The row of `table` whose key is `tool` and `action` joined by a colon, or null. An absent action is written
// "None", which is in no key.
template <typename Table>
constexpr auto* find_joined(const Table& table, std::string_view tool,
                            std::optional<std::string_view> action) noexcept {
  const auto row = std::find_if(table.begin(), table.end(), [&](const auto& each) {
    return is_joined_key(each.key, tool, action.value_or("None"));
  });
  return row == table.end() ? nullptr : &*row;
}

template <typename Table>
constexpr bool has_unique_keys(const Table& table) noexcept {
  for (auto row = table.begin(); row != table.end(); ++row) {
    if (std::any_of(table.begin(), row, [&](const auto& other) { return other.key == row->key; }))
      return false;
  }
  return true;
}

}  // namespace detail

/// One row of the catalogue. Its key is a tool, or a tool and an action joined by a colon.
class FollowUps {
 public:
  /// The maximum number of hints of one row.
  static constexpr std::size_t kMaxHints = 3;

  /// `hints` has at most kMaxHints pointers, none null. The row refers to them.
  consteval FollowUps(std::string_view row_key, std::initializer_list<const Hint*> hints)
      : key(row_key), count_(hints.size()) {
    std::copy(hints.begin(), hints.end(), hints_.begin());
  }

  const std::string_view key;  ///< "symbol" or "symbol:callers"

  /// The hints in the order of their steps; none is null.
  constexpr std::span<const Hint* const> hints() const noexcept { return {hints_.data(), count_}; }

 private:
  std::array<const Hint*, kMaxHints> hints_{};
  std::size_t count_;
};

/// The usual follow-ups, one row for each tool or tool and action.
class Catalogue {
 public:
  /// The number of rows.
  static constexpr std::size_t kRows = 20;

  /// The keys of `rows` are unique.
  consteval explicit Catalogue(const std::array<FollowUps, kRows>& rows) : rows_(rows) {}

  /// The first row, a FollowUps.
  constexpr auto begin() const noexcept { return rows_.begin(); }
  /// One past the last row.
  constexpr auto end() const noexcept { return rows_.end(); }

  /// The row with the key `key`, or null.
  constexpr const FollowUps* find(std::string_view key) const noexcept {
    const auto* row = std::find_if(begin(), end(), [&](const FollowUps& each) { return each.key == key; });
    return row == end() ? nullptr : row;
  }

 private:
  std::array<FollowUps, kRows> rows_;
};

/// The catalogue of usual follow-ups.
inline constexpr Catalogue NEXT_STEPS{{{
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
static_assert(detail::has_unique_keys(NEXT_STEPS));

/// The maximum number of steps from signals and usual follow-ups together.
inline constexpr std::size_t MAX_STEPS = 3;

/// The share of an answer's bytes that its hint fields may take.
inline constexpr double HINT_SHARE = 0.15;

/// The minimum room for hints, in bytes.
inline constexpr std::size_t HINT_FLOOR_BYTES = 320;

/// The object fields that are hints, at any depth.
inline constexpr std::array<std::string_view, 7> HINT_KEYS = {"hint",  "hints", "next_steps", "note",
                                                              "notes", "tip",   "tips"};

/// The minimum number of callers or references for which a symbol's blast radius is worth a step.
inline constexpr std::int64_t FAN_IN_FOR_IMPACT = 8;

/// The maximum number of files in a step to recommended tests.
inline constexpr std::size_t MAX_STEP_FILES = 10;

}  // namespace vantrex::tool_handlers::next_steps

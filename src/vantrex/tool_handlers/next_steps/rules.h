// The rules of the tables: which call to make, what it takes from an answer, and when.
//
// One description serves the module's tables, which are constant data, and a server's own catalogue. A rule
// borrows its texts and lists from one of them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The empty object.
inline constinit const values::JsonObject kNoFields;

// Keys that lead into nested objects.
using KeyPath = std::span<const std::string_view>;

// The key of a row: a tool, or a tool and an action joined by a colon.
struct RowKey {
  std::string_view tool;
  std::optional<std::string_view> action;

  friend auto operator<=>(const RowKey&, const RowKey&) = default;
};

inline RowKey split_key(std::string_view key) noexcept {
  const std::size_t colon = key.find(':');
  if (colon == std::string_view::npos) return {key, std::nullopt};
  return {key.substr(0, colon), key.substr(colon + 1)};
}

// Clang 14 does not link a default member that is a literal.
inline constexpr values::TextLiteral kNoText = "";

// Where the value of an argument comes from. Up to changed_files, the kinds and their numbers are those of
// Takes: one is cast to the other.
enum class ArgumentKind : std::uint8_t {
  fqn,
  path,
  query,
  component,
  changed_files,
  asked_fqn,    // the request's field if it is not empty, otherwise the answer's; never an empty value
  asked_query,  // likewise
  asked_path,   // the request's path, a string
  own           // an OwnKind
};

constexpr bool is_asked(ArgumentKind kind) noexcept {
  return kind >= ArgumentKind::asked_fqn && kind <= ArgumentKind::asked_path;
}

// One place where a kind of argument of a server's own may find its value.
struct ArgumentSource {
  enum class In : std::uint8_t { answer, hit, request };

  In in;
  KeyPath path;  // empty for the hit itself
};

// A kind of argument of a server's own. Its value is the first string or integer in `sources`.
struct OwnKind {
  std::string_view name;
  std::span<const ArgumentSource> sources;
};

// An argument that a call takes.
struct Argument {
  values::TextArgument name = kNoText;
  ArgumentKind kind = ArgumentKind::own;
  const OwnKind* own = nullptr;  // set if and only if the kind is ArgumentKind::own
  bool in_list = false;          // the call gets a list of the one value
};

// The names of all kinds but own ones, indexed by ArgumentKind.
std::span<const std::string_view> predefined_kinds() noexcept;

// The name of the kind: "fqn", "asked_query", or that of an own kind.
std::string_view kind_name(const Argument& argument) noexcept;

// Whether the value may come from a hit, so that an answer with 0 hits gives none.
bool takes_from_hits(const Argument& argument) noexcept;

// A call that may follow an answer.
struct Call {
  values::TextArgument tool = kNoText;
  values::TextArgument reason = kNoText;
  std::optional<values::TextLiteral> action = std::nullopt;  // a constant argument
  const values::JsonObject* args = nullptr;                  // further constant arguments, or null
  std::span<const Argument> takes = {};
};

// The constant arguments of `call`. Throws std::bad_alloc.
values::JsonObject constant_arguments(const Call& call);

// The constant argument "action", if it is a string.
std::optional<std::string_view> action_of(const Call& call) noexcept;

// The call in the format of a catalogue: {"tool", "args", "takes", "reason"}; empty members are left out.
// Throws std::bad_alloc.
values::JsonObject to_dict(const Call& call);

// When a signal fires, as far as the number of hits decides.
struct HitCondition {
  std::int64_t hits;
  bool or_more = false;

  bool holds(const values::Integer& count) const noexcept {
    return or_more ? count >= values::Integer(hits) : count == values::Integer(hits);
  }
};

// A call that the content of an answer calls for. In its reason, "{hits}" and "{action}" stand for the number
// of hits and the action.
struct Signal {
  HitCondition condition;
  Call call;

  // The step for what is known about an answer, or nothing. `known` has five fields:
  //   "hits"   the number of hits, null without a count
  //   "query"  the request's query if it is not empty, otherwise the answer's
  //   "fqn"    likewise
  //   "path"   the request's path
  //   "what"   the action, a string
  // Throws std::bad_alloc.
  std::optional<values::JsonObject> operator()(const values::JsonObject& known) const;
};

// A row of the usual follow-ups. Its key is a tool, or a tool and an action joined by a colon.
struct UsualRow {
  std::string_view key;
  std::span<const Call> calls;
};

// A row of the signals. Without a signal, the answers of its key have none.
struct SignalRow {
  std::string_view key;
  const Signal* signal;
};

// The calls of a miss; null for no step.
struct MissCalls {
  const Call* near = nullptr;  // takes the best candidate
  const Call* none = nullptr;  // takes the name to search for
};

// The tables of one catalogue.
struct Tables {
  std::span<const KeyPath> hit_lists;  // the answer fields that hold hits, in the order of the search
  std::span<const KeyPath> counts;     // the fields that state the number of hits
  std::span<const UsualRow> usual = {};
  std::span<const SignalRow> signals = {};
  MissCalls symbol_miss = {};
  MissCalls path_miss = {};

  // The row of `tool` and `action`, otherwise the row of `tool`, otherwise null.
  const UsualRow* usual_row(std::string_view tool, std::optional<std::string_view> action) const noexcept;
  // The same for a signal; the row of a tool whose name holds a colon does not count.
  const SignalRow* signal_row(std::string_view tool, std::optional<std::string_view> action) const noexcept;
};

}  // namespace vantrex::tool_handlers::next_steps

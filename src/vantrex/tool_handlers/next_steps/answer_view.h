// What steps are made of: an answer and the request that it answers.
//
// The rules that several kinds of step share stand here: what counts as a hit
// list, how many hits there are, which query is repeated, which path an item names.
//
// Pure functions: they change nothing they are given and may run on any thread.
// They throw only std::bad_alloc; a field of the wrong type counts as absent.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The fields of an answer that hold hits, in the order in which they are
// searched.
inline constexpr std::array<std::string_view, 10> _HIT_LISTS = {
    "symbols",    "results",      "matches", "definitions", "callers",
    "references", "dead_symbols", "files",   "tests",       "components"};

// An answer and a request, both borrowed. The hits are looked up once.
class AnswerView {
 public:
  // Absent arguments, null, are an empty object.
  AnswerView(const values::JsonObject& answer, const values::JsonObject* request);

  const values::JsonObject& response;
  const values::JsonObject& arguments;

  // The hit lists in the order of _HIT_LISTS, null where the answer has none.
  const std::array<const values::JsonList*, _HIT_LISTS.size()>& hit_lists() const noexcept {
    return hit_lists_;
  }

  // As _hit_count.
  const std::optional<values::Integer>& hit_count() const noexcept { return hit_count_; }
  // Whether the answer counts 0 hits. One that counts none does not.
  bool has_no_hits() const noexcept { return hit_count_ == values::Integer(0); }

  // The field `key` of the request when it says something, else of the answer.
  const values::JsonValue& requested_or_answered(std::string_view key) const noexcept;

 private:
  std::array<const values::JsonList*, _HIT_LISTS.size()> hit_lists_;
  std::optional<values::Integer> hit_count_;
};

// The number of hits that `response` says it has, or nothing when it counts
// none: a stated count first, else the length of the first hit list.
std::optional<values::Integer> _hit_count(const values::JsonObject& response);

// Whether the hit `item` is a code symbol.
bool _is_code_hit(const values::JsonObject& item) noexcept;

// The value when it is a string, else null.
inline const values::JsonValue* if_string(const values::JsonValue& value) noexcept {
  return value.text() == nullptr ? nullptr : &value;
}

// Whether a string in a list is the path of a file.
enum class PlainStrings { ignored, are_paths };

// The path that an item of a list names: its field "path", or itself when it is a
// string and those are paths. Null when it names none.
const values::JsonValue* item_path(const values::JsonValue& item, PlainStrings strings) noexcept;

}  // namespace vantrex::tool_handlers::next_steps

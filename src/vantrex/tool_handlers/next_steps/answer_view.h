// AnswerView: what the rules read of an answer and its request.
//
// It holds the rules that several kinds of step share: the hit lists, the number of hits, a field of the
// request or else of the answer, the path of an item.
//
// Pure functions. Throw only std::bad_alloc; a field of the wrong type counts as absent.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The answer fields that hold hits, in the order in which they are searched.
inline constexpr std::array<std::string_view, 10> _HIT_LISTS = {
    "symbols",    "results",      "matches", "definitions", "callers",
    "references", "dead_symbols", "files",   "tests",       "components"};

// The integer that `value` states. A boolean counts as one: true is 1, false is 0.
std::optional<values::Integer> stated_integer(const values::JsonValue& value) noexcept;

// A borrowed answer and request. The hits are looked up once.
class AnswerView {
 public:
  // Null `request_arguments` count as an empty object.
  AnswerView(const values::JsonObject& answer, const values::JsonObject* request_arguments);

  const values::JsonObject& response;
  const values::JsonObject& arguments;

  // The hit lists in the order of _HIT_LISTS; null where the answer has none.
  const std::array<const values::JsonList*, _HIT_LISTS.size()>& hit_lists() const noexcept {
    return hit_lists_;
  }

  // The number of hits: the stated count, otherwise the length of the first hit list; nothing without either.
  const std::optional<values::Integer>& hit_count() const noexcept { return hit_count_; }
  // Whether the hit count is 0; false without a count.
  bool has_no_hits() const noexcept { return hit_count_ == values::Integer(0); }

  // The field `key` of the request if it is not empty, otherwise of the answer.
  const values::JsonValue& requested_or_answered(std::string_view key) const noexcept;

 private:
  std::array<const values::JsonList*, _HIT_LISTS.size()> hit_lists_;
  std::optional<values::Integer> hit_count_;
};

// Whether the hit `item` is a code symbol.
bool _is_code_hit(const values::JsonObject& item) noexcept;

// `value` if it is a string, otherwise null.
inline const values::JsonValue* if_string(const values::JsonValue& value) noexcept {
  return value.text() == nullptr ? nullptr : &value;
}

// Whether a string item of a list is the path of a file.
enum class PlainStrings { ignored, are_paths };

// The path of a list item: its field "path", or the item itself if it is a string and `strings` allows that;
// null for neither.
const values::JsonValue* item_path(const values::JsonValue& item, PlainStrings strings) noexcept;

}  // namespace vantrex::tool_handlers::next_steps

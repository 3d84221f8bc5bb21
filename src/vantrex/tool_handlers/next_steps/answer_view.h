// AnswerView: what the rules read of an answer and its request.
//
// It holds the rules that several kinds of step share: the hit lists, the number of hits, a field of the
// request or else of the answer, the path of an item.
//
// Pure functions. Throw only std::bad_alloc; a field of the wrong type counts as absent.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/tool_handlers/next_steps/tables.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The answer fields that hold hits, in the order in which they are searched.
inline constexpr std::array<std::string_view, 10> _HIT_LISTS = {
    "symbols",    "results",      "matches", "definitions", "callers",
    "references", "dead_symbols", "files",   "tests",       "components"};

// The integer that `value` states. A boolean counts as one: true is 1, false is 0.
std::optional<values::Integer> stated_integer(const values::JsonValue& value) noexcept;

// A borrowed answer and request, and the tables that apply to them. The hits are looked up once.
class AnswerView {
 public:
  // Null `request_arguments` count as an empty object. `tables` must outlive the view.
  AnswerView(const values::JsonObject& answer, const values::JsonObject* request_arguments,
             const Tables& tables = module_tables());

  const values::JsonObject& response;
  const values::JsonObject& arguments;

  const Tables& tables() const noexcept { return tables_; }

  // The hit lists in the order of the tables; null where the answer has none.
  std::span<const values::JsonList* const> hit_lists() const noexcept { return hit_lists_; }

  // The number of hits: the stated count, otherwise the length of the first hit list; nothing without either.
  const std::optional<values::Integer>& hit_count() const noexcept { return hit_count_; }
  // Whether the hit count is 0; false without a count.
  bool has_no_hits() const noexcept { return hit_count_ == values::Integer(0); }

  // The field `key` of the request if it is not empty, otherwise of the answer.
  const values::JsonValue& requested_or_answered(std::string_view key) const noexcept;

 private:
  std::optional<values::Integer> _hit_count() const;

  const Tables& tables_;
  std::vector<const values::JsonList*> hit_lists_;
  std::optional<values::Integer> hit_count_;
};

// The value that `path` leads to; null when there is none.
inline const values::JsonValue& value_at(const values::JsonValue& value, KeyPath path) noexcept {
  const values::JsonValue* reached = &value;
  for (const std::string_view key : path) reached = &(*reached)[key];
  return *reached;
}
// The same for an object and a path of at least one key.
inline const values::JsonValue& value_at(const values::JsonObject& object, KeyPath path) noexcept {
  return value_at(object[path[0]], path.subspan(1));
}

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

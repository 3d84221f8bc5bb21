// Finds and replaces values in JSON text without reading all of it.
//
// A span is the text of one value, a part of the text that was searched. Linear time, no recursion. In a text
// that is no valid JSON, any of its bytes may be found.
#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace next_steps_proxy {

// The string in `span`, or "" for another value. Throws JsonError for a wrong escape, and std::bad_alloc.
std::string string_in(std::string_view span);

// Sets each of `found` to the value of its key in the object `text`. As for the reader, the last one of a
// repeated key counts. Leaves the others as they are. Throws JsonError for a key with a wrong escape, and
// std::bad_alloc.
void find_members(std::string_view text, std::span<const std::string_view> keys,
                  std::span<std::string_view> found);

// The same; an absent value is empty.
template <std::size_t kCount>
std::array<std::string_view, kCount> members_of(std::string_view text,
                                                const std::string_view (&keys)[kCount]) {
  std::array<std::string_view, kCount> values;
  find_members(text, keys, values);
  return values;
}

// Calls `visit` with each item of the list `text`; never if it is no list.
void visit_items(std::string_view text, const std::function<void(std::string_view item)>& visit);

struct NewValue {
  std::string_view old;  // a span
  std::string text;
};

// Returns `line` with the new values in place of the old ones, which are spans of it and do not overlap.
// Throws std::bad_alloc.
std::string spliced(std::string_view line, std::vector<NewValue> values);

}  // namespace next_steps_proxy

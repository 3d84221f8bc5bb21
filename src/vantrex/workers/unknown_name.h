// Messages about a name that is none of a few known ones.
//
// Pure functions. They throw std::bad_alloc.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vantrex::workers {

// Returns `unknown tool "serach"; did you mean "search"?`, or lists the known names if none is near: `unknown
// tool "x"; known are search, symbol`. `what` says what is named: "tool". Ill-formed bytes of `name` are
// replaced by U+FFFD.
std::string unknown_name(std::string_view what, std::string_view name,
                         std::span<const std::string_view> known);

// Returns the name of `known` that is nearest to `name`, or nothing if none is near.
std::optional<std::string> nearest_name(std::string_view name, std::span<const std::string_view> known);

// Returns `text` as a JSON string. Ill-formed bytes are replaced by U+FFFD.
std::string quoted(std::string_view text);

}  // namespace vantrex::workers

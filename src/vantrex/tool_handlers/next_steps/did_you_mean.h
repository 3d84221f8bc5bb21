// What to say about a name that is not known.
//
// Pure functions. Throw only std::bad_alloc.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vantrex::tool_handlers::next_steps {

// `text` as a JSON string, on one line. Ill-formed UTF-8 is replaced.
std::string quoted(std::string_view text);

// "one, two, three".
std::string listed(std::span<const std::string_view> names);

// The name in `known` that is nearest to `name`, or nothing if none is near.
std::optional<std::string> nearest_name(std::string_view name, std::span<const std::string_view> known);

// `unknown kind "isue"; did you mean "issue"?`, or `unknown kind "x"; known are fqn, path` if no name is
// near. `what` says what the name stands for.
std::string unknown_name(std::string_view what, std::string_view name,
                         std::span<const std::string_view> known);

}  // namespace vantrex::tool_handlers::next_steps

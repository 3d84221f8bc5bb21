// The place of a value in a document, as text: next_steps["issues:list"][0].takes
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantrex::tool_handlers::next_steps {

// Append a key or a position to the text of a place. A key that is not a plain word is quoted: ["a b"]. Throw
// std::bad_alloc.
void append_key(std::string& place, std::string_view key);
void append_position(std::string& place, std::size_t position);

}  // namespace vantrex::tool_handlers::next_steps

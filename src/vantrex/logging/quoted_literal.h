// Escapes arbitrary bytes for one line of a log.
//
// Pure functions. Throw only std::bad_alloc.
#pragma once

#include <string>
#include <string_view>

namespace vantrex::logging {

// `bytes` in single quotes, or in double quotes if it holds a single quote and no double quote. Escapes
// backslashes, the quote in use and what printable() escapes.
std::string quoted_literal(std::string_view bytes);

// `bytes` as well-formed UTF-8 on one line. Control characters become \n, \r, \t, \x1b or \u0085, the line
// and paragraph separators \u2028 and \u2029, and an ill-formed byte \xff.
std::string printable(std::string_view bytes);

}  // namespace vantrex::logging

// Text of any bytes, made fit for one line of a log.
//
// Pure functions; any number of threads may call them. They throw only
// std::bad_alloc.
#pragma once

#include <string>
#include <string_view>

namespace vantrex::logging {

// `bytes` between quotes: single ones, or double ones when the text holds a
// single quote and no double one. Backslashes, the quote in use and everything
// that printable() escapes are escaped.
std::string quoted_literal(std::string_view bytes);

// `bytes` as well-formed UTF-8 on one line: control characters are written as
// \n, \r, \t, \x1b or \u0085, the two line breaks outside ASCII as \u2028 and
// \u2029, and a byte that belongs to no well-formed sequence as \xff.
std::string printable(std::string_view bytes);

}  // namespace vantrex::logging

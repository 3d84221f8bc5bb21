// What the parser of JSON text does not do as needed: numbers of any length, and the first wrong byte.
//
// Pure functions, which do not depend on the locale: any number of threads may call them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace next_steps_requests {

// A number at the start of a text.
struct NumberScan {
  std::size_t size;   // in bytes; up to the first wrong byte if there is an error
  bool is_integer;    // has neither a fraction nor an exponent
  const char* error;  // null if the number is valid
};

// Scans the number at the start of `text`, which must end in a NUL.
NumberScan scan_number(const char* text) noexcept;

// Returns the double that is nearest to the valid number of any length at the start of `number`, which must
// end in a NUL. Beyond the range of a double it is infinite. Linear time.
double nearest_double(const char* number);

// What makes a text invalid, and the offset of the first byte that is wrong.
struct TextFault {
  std::size_t offset;
  std::string_view message;
  bool concerns_encoding;  // ill-formed UTF-8 or a lone surrogate
};

// Returns the fault at `parsed`, where the parser stopped, or the first of a byte-order mark, a NUL byte and,
// if `checks_encoding`, ill-formed UTF-8 and a lone surrogate, if that does not come later.
TextFault first_fault(std::string_view text, TextFault parsed, bool checks_encoding);

// Returns the fault in the escape at `escape`, a backslash. The escape is invalid, or that of a lone
// surrogate.
TextFault escape_fault(std::string_view text, std::size_t escape);

// Replaces the escape of each lone surrogate by that of U+FFFD, which is as long.
void replace_lone_surrogates(std::string& text);

}  // namespace next_steps_requests

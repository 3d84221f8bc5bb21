// Numbers in JSON text.
//
// Pure functions, which do not depend on the locale: any number of threads may call them.
#pragma once

#include <cstddef>
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

// Returns the double that is nearest to a valid number of any length; beyond the range of a double it is
// infinite. Linear time. Throws std::bad_alloc.
double nearest_double(std::string_view number);

}  // namespace next_steps_requests

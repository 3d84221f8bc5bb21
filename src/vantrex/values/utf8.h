// Scanning text for well-formed UTF-8.
//
// Pure functions without state: any number of threads may call them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantrex::values {

// What one pass over a text finds out.
struct Utf8Scan {
  // Bytes before the first ill-formed one; the whole size when there is none.
  std::size_t well_formed = 0;
  // Bytes that the well-formed part gains when it is escaped in a JSON string.
  std::size_t escape_gain = 0;
};

// Scans `bytes` up to its end or its first ill-formed byte. Overlong forms,
// surrogates and code points above U+10FFFF are ill-formed.
Utf8Scan scan_utf8(std::string_view bytes) noexcept;

// `bytes` with each maximal ill-formed piece replaced by one U+FFFD.
std::string repaired_utf8(std::string_view bytes);

// Bytes of the well-formed sequence at the start of `bytes`, 0 when it is
// ill-formed or `bytes` is empty.
std::size_t utf8_sequence_length(std::string_view bytes) noexcept;

}  // namespace vantrex::values

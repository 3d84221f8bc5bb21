// Scans and repairs UTF-8.
//
// Pure functions: any number of threads may call them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "vantrex/values/text_bits.h"

namespace vantrex::values {

// The length in bytes of the well-formed character at the start of `bytes`, or 0 when there is none. `bytes`
// is not empty.
constexpr std::size_t utf8_sequence_length(std::string_view bytes) noexcept {
  const Utf8Prefix prefix = utf8_prefix(bytes);
  return prefix.is_complete ? prefix.length : 0;
}

struct Utf8Scan {
  std::size_t well_formed = 0;  // the bytes before the first ill-formed one
  std::size_t escape_gain = 0;  // the bytes that escaping adds to these in a JSON string
};

// Scans `bytes` up to the end or the first ill-formed byte.
Utf8Scan scan_utf8(std::string_view bytes) noexcept;

// `bytes` with each maximal ill-formed piece replaced by one U+FFFD.
std::string repaired_utf8(std::string_view bytes);

}  // namespace vantrex::values

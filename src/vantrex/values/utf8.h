// Checks and repairs UTF-8.
//
// Overlong forms, surrogates and code points above U+10FFFF are ill-formed. Pure functions: any number of
// threads may call them.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace vantrex::values {

/// The first character of a byte sequence, or the ill-formed piece in its place.
struct Utf8Prefix {
  std::size_t length;  ///< In bytes, at least 1.
  bool is_complete;    ///< Whether the bytes are a whole character.
};

/// The first character of `bytes`, which must not be empty, or the ill-formed piece in its place.
constexpr Utf8Prefix utf8_prefix(std::string_view bytes) noexcept {
  const auto byte_at = [bytes](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  const unsigned lead = byte_at(0);
  if (lead < 0x80) return {1, true};
  if (lead < 0xC2 || lead > 0xF4) return {1, false};
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  // The range of the second byte excludes overlong forms, surrogates and code points above U+10FFFF.
  unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  for (std::size_t at = 1; at < length; ++at) {
    if (at == bytes.size() || byte_at(at) < low || byte_at(at) > high) return {at, false};
    low = 0x80;
    high = 0xBF;
  }
  return {length, true};
}

/// The length in bytes of the well-formed character at the start of `bytes`, or 0 when there is none. `bytes`
/// is not empty.
constexpr std::size_t utf8_sequence_length(std::string_view bytes) noexcept {
  const Utf8Prefix prefix = utf8_prefix(bytes);
  return prefix.is_complete ? prefix.length : 0;
}

/// The result of a scan.
struct Utf8Scan {
  std::size_t well_formed = 0;  ///< The bytes before the first ill-formed one.
  std::size_t escape_gain = 0;  ///< The bytes that escaping adds to these in a JSON string.
};

/// Scans `bytes` up to the end or the first ill-formed byte.
Utf8Scan scan_utf8(std::string_view bytes) noexcept;

/// `bytes` with each maximal ill-formed piece replaced by one U+FFFD.
std::string repaired_utf8(std::string_view bytes);

}  // namespace vantrex::values

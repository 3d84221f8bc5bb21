// What a byte gains when it is written inside a JSON string.
//
// The scan of a new text adds these gains up, and the writer takes its escapes
// from the same function, so the two cannot disagree.
#pragma once

#include <cstddef>

namespace vantrex::values::detail {

inline constexpr std::size_t kShortEscapeGain = 1;    // \n instead of a line feed
inline constexpr std::size_t kUnicodeEscapeGain = 5;  // \u0001 instead of U+0001

// The letter of a two-character escape, or 0 for a byte that has none.
constexpr char short_escape(unsigned char byte) noexcept {
  switch (byte) {
    case '"':
      return '"';
    case '\\':
      return '\\';
    case '\b':
      return 'b';
    case '\f':
      return 'f';
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    case '\t':
      return 't';
    default:
      return 0;
  }
}

// 0 for a byte that is written as it is.
constexpr std::size_t escape_gain(char byte) noexcept {
  const auto value = static_cast<unsigned char>(byte);
  if (short_escape(value) != 0) return kShortEscapeGain;
  return value < 0x20 ? kUnicodeEscapeGain : 0;
}

}  // namespace vantrex::values::detail

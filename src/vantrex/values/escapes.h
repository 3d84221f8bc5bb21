// The escapes of JSON strings, and the bytes that each adds (the escape gain).
//
// The scan of a new text and the writer both use these functions, so measured and written sizes agree.
#pragma once

#include <cstddef>

namespace vantrex::values::detail {

inline constexpr std::size_t kShortEscapeGain = 1;    ///< Two characters instead of one.
inline constexpr std::size_t kUnicodeEscapeGain = 5;  ///< Six characters instead of one.

/// The letter of the two-character escape of `byte`, or 0 when it has none.
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

/// The bytes that escaping adds to `byte`; 0 when it is not escaped.
constexpr std::size_t escape_gain(char byte) noexcept {
  const auto value = static_cast<unsigned char>(byte);
  if (short_escape(value) != 0) return kShortEscapeGain;
  return value < 0x20 ? kUnicodeEscapeGain : 0;
}

}  // namespace vantrex::values::detail

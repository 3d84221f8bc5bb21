// What a JSON string costs beyond its own bytes.
//
// One table says how many bytes a byte of text gains when it is written inside
// a JSON string. The scan of a new text adds these up, the writer tells by the
// same table which bytes it must replace, so the two cannot disagree.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

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

inline constexpr std::array<std::uint8_t, 256> kEscapeGain = [] {
  std::array<std::uint8_t, 256> gain{};
  for (std::size_t byte = 0; byte < gain.size(); ++byte) {
    if (short_escape(static_cast<unsigned char>(byte)) != 0) {
      gain[byte] = kShortEscapeGain;
    } else if (byte < 0x20) {
      gain[byte] = kUnicodeEscapeGain;
    }
  }
  return gain;
}();

constexpr std::size_t escape_gain(char byte) noexcept {
  return kEscapeGain[static_cast<unsigned char>(byte)];
}

}  // namespace vantrex::values::detail

// ByteWord: eight bytes of a text, looked at together.
//
// A byte is special when a JSON string escapes it: the quote, the backslash and
// what is below U+0020. A mask has the high bit of some bytes set and no other
// bit. No sum below carries from one byte into the next, so masks are exact.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "vantrex/values/escapes.h"

namespace vantrex::values::detail {

class ByteWord {
 public:
  static constexpr std::size_t kBytes = 8;

  // The eight bytes at `bytes`.
  explicit ByteWord(const char* bytes) noexcept { std::memcpy(&word_, bytes, kBytes); }

  // The `size` bytes at `bytes`, 1 to 7, some of them repeated, and spaces; their
  // order is lost.
  static ByteWord of_few(const char* bytes, std::size_t size) noexcept {
    char slots[kBytes] = {' ', ' ', ' ', ' ', ' ', ' ', ' ', ' '};
    if (size >= 4) {
      std::memcpy(slots, bytes, 4);
      std::memcpy(slots + 4, bytes + size - 4, 4);
    } else {
      slots[0] = bytes[0];
      slots[1] = bytes[size / 2];
      slots[2] = bytes[size - 1];
    }
    return ByteWord(slots);
  }

  bool is_ascii() const noexcept { return (word_ & kHighBits) == 0; }
  // Whether all bytes are ASCII and none is special.
  bool is_plain() const noexcept { return ((word_ & kHighBits) | specials()) == 0; }

  // The mask of the special bytes.
  std::uint64_t specials() const noexcept { return controls() | equal('"') | equal('\\'); }

  // The bytes before the first one in `mask`, which is not 0.
  static std::size_t bytes_before(std::uint64_t mask) noexcept {
    const int bits =
        std::endian::native == std::endian::little ? std::countr_zero(mask) : std::countl_zero(mask);
    return static_cast<std::size_t>(bits) / 8;
  }

  // Bytes that all eight gain when they are escaped.
  std::size_t escape_gain() const noexcept {
    const std::uint64_t mask = specials();
    if (mask == 0) return 0;
    const std::uint64_t short_controls = at_least('\b') & ~at_least('\r' + 1) & ~equal('\v');
    const std::uint64_t long_escapes = controls() & ~short_controls;
    const std::uint64_t gains =
        (mask >> 7) * kShortEscapeGain + (long_escapes >> 7) * (kUnicodeEscapeGain - kShortEscapeGain);
    return gains * kOnes >> 56;  // the sum of the bytes
  }

 private:
  static constexpr std::uint64_t kOnes = 0x0101010101010101;
  static constexpr std::uint64_t kHighBits = kOnes * 0x80;

  std::uint64_t controls() const noexcept { return ~at_least(' ') & kHighBits; }

  // The masks of the bytes that are at least `low`, up to 0x80, and equal to `byte`.
  std::uint64_t at_least(unsigned char low) const noexcept {
    return (((word_ & ~kHighBits) + kOnes * (0x80U - low)) | word_) & kHighBits;
  }
  std::uint64_t equal(unsigned char byte) const noexcept {
    const std::uint64_t differences = word_ ^ (kOnes * byte);
    return ~(((differences & ~kHighBits) + kOnes * 0x7F) | differences) & kHighBits;
  }

  std::uint64_t word_;
};

}  // namespace vantrex::values::detail

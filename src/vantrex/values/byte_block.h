// Several bytes of a text, processed together: eight as a word, or sixteen as an SSE2 vector.
//
// A byte is special when a JSON string escapes it: the quote, the backslash and U+0000 to U+001F. A byte is
// plain when it is ASCII and not special.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "vantrex/values/text_bits.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vantrex::values::detail {

// Eight bytes. A mask has the high bit set for each byte that it selects, and no other bit. No sum below
// carries from one byte into the next, so masks are exact.
class ByteWord {
 public:
  static constexpr std::size_t kBytes = 8;

  explicit ByteWord(const char* bytes) noexcept {
    std::memcpy(&word_, bytes, kBytes);
    if (std::endian::native == std::endian::big) word_ = __builtin_bswap64(word_);
  }

  // A word of 1 to 7 bytes, in any order, some of them repeated, padded with spaces. Only is_ascii() and
  // is_plain() are meaningful.
  static ByteWord of_few(const char* bytes, std::size_t size) noexcept {
    ByteWord few;
    if (size >= 4) {
      std::uint32_t first = 0;
      std::uint32_t last = 0;
      std::memcpy(&first, bytes, sizeof first);
      std::memcpy(&last, bytes + size - sizeof last, sizeof last);
      few.word_ = first | std::uint64_t{last} << 32;
    } else {
      const auto byte = [bytes](std::size_t at) -> std::uint64_t {
        return static_cast<unsigned char>(bytes[at]);
      };
      few.word_ = byte(0) | byte(size / 2) << 8 | byte(size - 1) << 16 | (kOnes * ' ') << 24;
    }
    return few;
  }

  bool is_ascii() const noexcept { return (word_ & kHighBits) == 0; }
  bool is_plain() const noexcept { return ((word_ & kHighBits) | specials()) == 0; }

  std::uint64_t word() const noexcept { return word_; }

  // The mask of the special bytes.
  std::uint64_t specials() const noexcept { return controls() | equal('"') | equal('\\'); }

  // The number of bytes before the first one that `mask` selects. `mask` must not be 0.
  static std::size_t bytes_before(std::uint64_t mask) noexcept {
    return static_cast<std::size_t>(std::countr_zero(mask)) / 8;
  }

 private:
  ByteWord() noexcept = default;

  static constexpr std::uint64_t kOnes = 0x0101010101010101;
  static constexpr std::uint64_t kHighBits = kOnes * 0x80;

  // The mask of the bytes below U+0020.
  std::uint64_t controls() const noexcept {
    return ~(((word_ & ~kHighBits) + kOnes * (0x80U - ' ')) | word_) & kHighBits;
  }
  // The mask of the bytes that are equal to `byte`.
  std::uint64_t equal(unsigned char byte) const noexcept {
    const std::uint64_t differences = word_ ^ (kOnes * byte);
    return ~(((differences & ~kHighBits) + kOnes * 0x7F) | differences) & kHighBits;
  }

  std::uint64_t word_;
};

#ifdef __SSE2__

// Sixteen bytes, with the interface of ByteWord. A mask has one bit per byte.
class ByteVector {
 public:
  static constexpr std::size_t kBytes = 16;

  explicit ByteVector(const char* bytes) noexcept
      : vector_(_mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes))) {}

  static ByteVector of_few(const char* bytes, std::size_t size) noexcept {
    const bool is_short = size < ByteWord::kBytes;
    const ByteWord first = is_short ? ByteWord::of_few(bytes, size) : ByteWord(bytes);
    const ByteWord last = is_short ? first : ByteWord(bytes + size - ByteWord::kBytes);
    return ByteVector(
        _mm_set_epi64x(static_cast<std::int64_t>(last.word()), static_cast<std::int64_t>(first.word())));
  }

  bool is_ascii() const noexcept { return _mm_movemask_epi8(vector_) == 0; }
  bool is_plain() const noexcept { return _mm_movemask_epi8(_mm_or_si128(vector_, special_bytes())) == 0; }
  std::uint64_t specials() const noexcept {
    return static_cast<std::uint64_t>(_mm_movemask_epi8(special_bytes()));
  }
  static std::size_t bytes_before(std::uint64_t mask) noexcept {
    return static_cast<std::size_t>(std::countr_zero(mask));
  }

 private:
  explicit ByteVector(__m128i vector) noexcept : vector_(vector) {}

  static __m128i all(std::size_t byte) noexcept { return _mm_set1_epi8(static_cast<char>(byte)); }
  static __m128i at_most(__m128i bytes, unsigned char high) noexcept {
    return _mm_cmpeq_epi8(_mm_min_epu8(bytes, all(high)), bytes);
  }

  __m128i equal(char byte) const noexcept { return _mm_cmpeq_epi8(vector_, _mm_set1_epi8(byte)); }
  __m128i controls() const noexcept { return at_most(vector_, ' ' - 1); }
  __m128i special_bytes() const noexcept {
    return _mm_or_si128(controls(), _mm_or_si128(equal('"'), equal('\\')));
  }

  __m128i vector_;
};

#else

using ByteVector = ByteWord;

#endif

}  // namespace vantrex::values::detail

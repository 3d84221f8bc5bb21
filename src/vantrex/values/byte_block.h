// Sixteen bytes of a text, processed together.
//
// A byte is special when a JSON string escapes it: the quote, the backslash and U+0000 to U+001F. A byte is
// plain when it is ASCII and not special.
#pragma once

#include <bit>
#include <cstddef>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace vantrex::values::detail {

// A mask has one bit per byte; the lowest is the first byte's.
class ByteBlock {
 public:
  static constexpr std::size_t kBytes = 16;

  explicit ByteBlock(const char* bytes) noexcept { std::memcpy(&bytes_, bytes, kBytes); }

  // A block of up to 15 bytes, padded with spaces.
  static ByteBlock of_few(const char* bytes, std::size_t size) noexcept {
    char few[kBytes];
    std::memset(few, ' ', kBytes);
    std::memcpy(few, bytes, size);
    return ByteBlock(few);
  }

  bool is_ascii() const noexcept { return high_bits(bytes_) == 0; }
  bool is_plain() const noexcept { return high_bits(bytes_ | special()) == 0; }

  // The mask of the special bytes.
  unsigned specials() const noexcept { return high_bits(special()); }

  // The number of bytes before the first one that `mask` selects. `mask` must not be 0.
  static std::size_t bytes_before(unsigned mask) noexcept {
    return static_cast<std::size_t>(std::countr_zero(mask));
  }

 private:
  using Bytes [[gnu::vector_size(kBytes)]] = unsigned char;

  // 0xFF for each special byte, 0 for the others.
  Bytes special() const noexcept {
    return static_cast<Bytes>((bytes_ < 0x20) | (bytes_ == '"') | (bytes_ == '\\'));
  }

  // The mask of the bytes with the high bit.
  static unsigned high_bits(Bytes bytes) noexcept {
#ifdef __SSE2__
    return static_cast<unsigned>(_mm_movemask_epi8(reinterpret_cast<__m128i>(bytes)));
#else
    unsigned mask = 0;
    for (std::size_t at = 0; at < kBytes; ++at) mask |= unsigned{bytes[at]} >> 7U << at;
    return mask;
#endif
  }

  Bytes bytes_;
};

}  // namespace vantrex::values::detail

// What the text of a value is put into: bytes that are written, or a count of them.
//
// Both take the same calls, so the text and its size come from one set of rules.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

#include "vantrex/values/byte_block.h"
#include "vantrex/values/number_text.h"
#include "vantrex/values/value_access.h"

namespace vantrex::values::detail {

// Whether floats count as what they take, which is known once they are written, or
// as the most that one can take.
enum class FloatSizes { exact, maximal };

// Counts bytes, until it is full.
template <FloatSizes kFloatSizes>
class CountingSink {
 public:
  explicit CountingSink(std::size_t limit = std::numeric_limits<std::size_t>::max()) noexcept
      : limit_(limit) {}

  void put(char /*byte*/) noexcept { ++size_; }
  void put(std::string_view bytes) noexcept { size_ += bytes.size(); }
  void put_integer(std::int64_t value) noexcept { size_ += integer_text_size(value); }
  void put_float(double value) noexcept {
    size_ += kFloatSizes == FloatSizes::exact ? float_text_size(value) : kMaxNumberBytes;
  }
  void put_string(const Text& text) noexcept { size_ += text.size() + text.escape_gain() + 2; }
  void replace_last(char /*byte*/) noexcept {}

  bool is_full() const noexcept { return size_ >= limit_; }
  std::size_t size() const noexcept { return size_; }

 private:
  std::size_t size_ = 0;
  std::size_t limit_;
};

// How one byte is written inside a JSON string.
struct Escape {
  char bytes[7];
  std::uint8_t size;
};
inline constexpr std::array<Escape, 256> kEscapes = [] {
  constexpr std::string_view kHexDigits = "0123456789abcdef";
  std::array<Escape, 256> escapes{};
  for (std::size_t value = 0; value < escapes.size(); ++value) {
    const char byte = static_cast<char>(value);
    const std::size_t gain = escape_gain(byte);
    Escape& escape = escapes[value];
    if (gain == 0) {
      escape = {{byte}, 1};
    } else if (gain == kShortEscapeGain) {
      escape = {{'\\', short_escape(static_cast<unsigned char>(byte))}, 2};
    } else {
      escape = {{'\\', 'u', '0', '0', kHexDigits[value >> 4], kHexDigits[value & 15]}, 6};
    }
  }
  return escapes;
}();

// Writes into memory that has room for kSlack bytes more than the text.
class MemorySink {
 public:
  // Some bytes behind the text are written too, since that is faster than to write
  // some bytes of a word.
  static constexpr std::size_t kSlack = 16;

  explicit MemorySink(char* out) noexcept : out_(out) {}

  void put(char byte) noexcept { *out_++ = byte; }
  void put(std::string_view bytes) noexcept {
    std::memcpy(out_, bytes.data(), bytes.size());
    out_ += bytes.size();
  }
  void put_integer(std::int64_t value) noexcept { out_ = write_integer(value, out_); }
  void put_float(double value) noexcept { out_ = write_float(value, out_); }
  void put_string(const Text& text) noexcept {
    const TextBits& bits = ValueAccess::bits(text);
    put('"');
    if (bits.escape_gain() != 0) {
      put_escaped(bits.view());
    } else if (bits.is_inline()) {
      std::memcpy(out_, bits.in.characters, kInlineCapacity);
      out_ += bits.size();
    } else {
      put(bits.view());
    }
    put('"');
  }
  void replace_last(char byte) noexcept { out_[-1] = byte; }

  static constexpr bool is_full() noexcept { return false; }
  char* end() const noexcept { return out_; }

 private:
  void put_escaped(std::string_view bytes) noexcept {
    put_blocks<ByteVector>(bytes);
    put_blocks<ByteWord>(bytes);
    for (const char byte : bytes) put_byte(byte);
  }

  // Puts `bytes` as long as they fill blocks, and leaves the others in it.
  template <typename Block>
  void put_blocks(std::string_view& bytes) noexcept {
    while (bytes.size() >= Block::kBytes) {
      const std::uint64_t specials = Block(bytes.data()).specials();
      std::memcpy(out_, bytes.data(), Block::kBytes);
      const std::size_t plain = specials == 0 ? Block::kBytes : Block::bytes_before(specials);
      out_ += plain;
      bytes.remove_prefix(plain);
      if (specials == 0) continue;
      put_byte(bytes.front());
      bytes.remove_prefix(1);
    }
  }

  void put_byte(char byte) noexcept {
    const Escape& escape = kEscapes[static_cast<unsigned char>(byte)];
    std::memcpy(out_, &escape, sizeof escape);
    out_ += escape.size;
  }

  char* out_;
};

}  // namespace vantrex::values::detail

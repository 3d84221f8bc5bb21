// The sinks of a value's text: MemorySink writes it, CountingSink counts its bytes.
//
// Both have the same interface, so one writer produces the text and its size.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "vantrex/values/byte_block.h"
#include "vantrex/values/number_text.h"
#include "vantrex/values/value_access.h"

namespace vantrex::values::detail {

// How CountingSink counts a float: by its exact size, or as kMaxNumberBytes.
enum class FloatSizes { exact, maximal };

// The room in bytes after ensure_room() or put_string(): enough for a number or a word such as null, with the
// punctuation around it.
inline constexpr std::size_t kRoom = kMaxNumberBytes + 8;

// Counts bytes.
template <FloatSizes kFloatSizes>
class CountingSink {
 public:
  void ensure_room() noexcept {}
  void put(char /*byte*/) noexcept { ++size_; }
  void put(std::string_view bytes) noexcept { size_ += bytes.size(); }
  void put_digits(std::string_view digits) noexcept { put(digits); }
  void put_integer(std::int64_t value) noexcept { size_ += integer_text_size(value); }
  void put_float(double value) noexcept {
    size_ += kFloatSizes == FloatSizes::exact ? float_text_size(value) : kMaxNumberBytes;
  }
  void put_string(const Text& text) noexcept { size_ += text.size() + text.escape_gain() + 2; }
  void replace_last(char /*byte*/) noexcept {}
  void drop_last() noexcept { --size_; }

  std::size_t size() const noexcept { return size_; }

 private:
  std::size_t size_ = 0;
};

// The text of one byte inside a JSON string.
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

// The memory of a text during writing. A text starts in a buffer on the stack. When the buffer is full, the
// text is measured, and continues in a string of that size.
//
// `Measure` returns an upper bound of the whole text's size.
template <typename Measure>
class TextMemory {
 public:
  explicit TextMemory(Measure measure) : measure_(measure) {}

  char* begin() noexcept { return long_text_.empty() ? short_text_.data() : long_text_.data(); }
  char* end() noexcept { return begin() + (long_text_.empty() ? short_text_.size() : long_text_.size()); }

  // Moves the text, written up to `end`, to a string with room for the whole text and `spare` bytes more.
  // Returns the end in the string. Is called at most once.
  [[gnu::noinline]] char* grow(const char* end, std::size_t spare) {
    assert(long_text_.empty());
    const auto written = static_cast<std::size_t>(end - short_text_.data());
    long_text_.resize(measure_() + spare);
    std::memcpy(long_text_.data(), short_text_.data(), written);
    return long_text_.data() + written;
  }
  // Returns the text, which ends at `end`.
  std::string take(const char* end) && {
    const auto size = static_cast<std::size_t>(end - begin());
    if (long_text_.empty()) return {short_text_.data(), size};
    long_text_.resize(size);
    return std::move(long_text_);
  }

 private:
  static constexpr std::size_t kShortBytes = 8192;

  Measure measure_;
  std::string long_text_;
  std::array<char, kShortBytes> short_text_;  // NOLINT(*-member-init): written before it is read
};

// Writes into a TextMemory. It stores whole blocks, so it may write some bytes beyond the end of the text.
template <typename Memory>
class MemorySink {
 public:
  explicit MemorySink(Memory& memory) noexcept : memory_(&memory), out_(memory.begin()), end_(memory.end()) {}

  void ensure_room() { ensure(0); }
  void put(char byte) noexcept { *out_++ = byte; }
  void put(std::string_view bytes) noexcept {
    std::memcpy(out_, bytes.data(), bytes.size());
    out_ += bytes.size();
  }
  void put_digits(std::string_view digits) {
    ensure(digits.size());
    put(digits);
  }
  void put_integer(std::int64_t value) noexcept { out_ = write_integer(value, out_); }
  void put_float(double value) noexcept { out_ = write_float(value, out_); }
  void put_string(const Text& text) {
    const TextBits& bits = ValueAccess::bits(text);
    ensure(bits.size() + text.escape_gain());
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
  void drop_last() noexcept { --out_; }

  char* end() const noexcept { return out_; }

 private:
  // The room behind a string: kRoom, and a block or an escape that reaches beyond the end.
  static constexpr std::size_t kSpare = kRoom + ByteVector::kBytes;

  void ensure(std::size_t bytes) {
    if (bytes + kSpare <= static_cast<std::size_t>(end_ - out_)) [[likely]]
      return;
    out_ = memory_->grow(out_, kSpare);
    end_ = memory_->end();
  }

  void put_escaped(std::string_view bytes) noexcept {
    while (bytes.size() >= ByteVector::kBytes) {
      const std::uint64_t specials = ByteVector(bytes.data()).specials();
      std::memcpy(out_, bytes.data(), ByteVector::kBytes);
      const std::size_t plain = specials == 0 ? ByteVector::kBytes : ByteVector::bytes_before(specials);
      out_ += plain;
      bytes.remove_prefix(plain);
      if (specials == 0) continue;
      put_byte(bytes.front());
      bytes.remove_prefix(1);
    }
    for (const char byte : bytes) put_byte(byte);
  }

  void put_byte(char byte) noexcept {
    const Escape& escape = kEscapes[static_cast<unsigned char>(byte)];
    std::memcpy(out_, &escape, sizeof escape);
    out_ += escape.size;
  }

  Memory* memory_;
  char* out_;
  char* end_;
};

}  // namespace vantrex::values::detail

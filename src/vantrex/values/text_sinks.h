// The sinks of a value's text: MemorySink writes it, CountingSink counts its bytes.
//
// Both have the same interface, so one writer produces the text and its size.
#pragma once

#include <algorithm>
#include <array>
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

// The room in bytes after ensure_room() or put_string(): enough for a number or a word such as null, with the
// punctuation around it.
inline constexpr std::size_t kRoom = kMaxNumberBytes + 8;

// Counts bytes.
class CountingSink {
 public:
  void ensure_room() noexcept {}
  void put(char /*byte*/) noexcept { ++size_; }
  void put(std::string_view bytes) noexcept { size_ += bytes.size(); }
  void put_digits(std::string_view digits) noexcept { put(digits); }
  void put_integer(std::int64_t value) noexcept { size_ += integer_text_size(value); }
  void put_float(double value) noexcept { size_ += float_text_size(value); }
  void put_string(const Text& text) noexcept { size_ += text.size() + text.escape_gain() + 2; }
  void replace_last(char /*byte*/) noexcept {}
  void drop_last() noexcept { --size_; }

  std::size_t size() const noexcept { return size_; }

 private:
  std::size_t size_ = 0;
};

// The memory of a text during writing: a buffer on the stack, and a string for what no longer fits there.
class TextMemory {
 public:
  static constexpr std::size_t kBufferBytes = 8192;

  char* begin() noexcept { return buffer_.data(); }
  const char* end() const noexcept { return buffer_.data() + kBufferBytes; }

  // Appends the bytes before `out` to the string, except the last one, which the sink may still replace.
  // Returns the new write position.
  [[gnu::noinline]] char* flush(char* out) {
    if (out == begin()) return begin();
    text_.append(begin(), out - 1);
    buffer_[0] = out[-1];
    return begin() + 1;
  }
  // Returns the text, whose last byte is before `out`.
  std::string take(char* out) && {
    if (text_.empty()) return {begin(), out};
    text_.append(begin(), out);
    return std::move(text_);
  }

 private:
  std::string text_;
  std::array<char, kBufferBytes> buffer_;  // NOLINT(*-member-init): written before it is read
};

// Writes into a TextMemory. It stores whole blocks, so it may write beyond the end of the text, within
// kSpare.
class MemorySink {
 public:
  explicit MemorySink(TextMemory& memory) noexcept
      : memory_(&memory), out_(memory.begin()), end_(memory.end()) {}

  void ensure_room() {
    if (!has_room(0)) [[unlikely]]
      out_ = memory_->flush(out_);
  }
  void put(char byte) noexcept { *out_++ = byte; }
  void put(std::string_view bytes) noexcept {
    std::memcpy(out_, bytes.data(), bytes.size());
    out_ += bytes.size();
  }
  void put_digits(std::string_view digits) { put_pieces(digits); }
  void put_integer(std::int64_t value) noexcept { out_ = write_integer(value, out_); }
  void put_float(double value) noexcept { out_ = write_float(value, out_); }
  void put_string(const Text& text) {
    const TextBits& bits = ValueAccess::bits(text);
    if (!has_room(bits.size() + text.escape_gain())) [[unlikely]]
      return put_long(bits.view());
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
  static constexpr std::size_t kSpare = kRoom + ByteBlock::kBytes;

  // Whether there is room for `bytes`, and kSpare more.
  bool has_room(std::size_t bytes) const noexcept {
    return bytes + kSpare <= static_cast<std::size_t>(end_ - out_);
  }

  // Puts a string of any size.
  [[gnu::noinline]] void put_long(std::string_view bytes) {
    out_ = memory_->flush(out_);
    put('"');
    put_pieces(bytes);
    put('"');
  }

  // Puts a text of any size, escaped.
  [[gnu::noinline]] void put_pieces(std::string_view bytes) {
    constexpr std::size_t kPieceBytes = 1024;
    while (!bytes.empty()) {
      if (!has_room(kPieceBytes * kMaxEscapeBytes)) out_ = memory_->flush(out_);
      put_escaped(bytes.substr(0, kPieceBytes));
      bytes.remove_prefix(std::min(bytes.size(), kPieceBytes));
    }
    ensure_room();
  }

  void put_escaped(std::string_view bytes) noexcept {
    while (bytes.size() >= ByteBlock::kBytes) {
      const unsigned specials = ByteBlock(bytes.data()).specials();
      std::memcpy(out_, bytes.data(), ByteBlock::kBytes);
      const std::size_t plain = specials == 0 ? ByteBlock::kBytes : ByteBlock::bytes_before(specials);
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

  TextMemory* memory_;
  char* out_;
  const char* end_;
};

}  // namespace vantrex::values::detail

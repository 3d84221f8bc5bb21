// Text: an immutable UTF-8 string in 16 bytes.
//
// Purpose: the strings and keys of JSON values. A Text is well-formed UTF-8
// from the moment it is made, and it knows how many bytes escaping adds to it,
// so that measuring an answer never reads a string again.
//
// Ownership: up to 14 bytes lie inside the object. Longer text lies in memory
// that all copies share by an atomic count; a literal stays where it is. Copying
// never allocates.
//
// Threads: like an int. Copies of one text may be used, copied and destroyed
// on different threads at once; one object must not be written while another
// thread uses it.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/text_bits.h"

namespace vantrex::values {

// Thrown when bytes that are no well-formed UTF-8 are made a text.
class NEXT_STEPS_API InvalidUtf8 : public std::invalid_argument {
 public:
  // `byte_offset` as below.
  explicit InvalidUtf8(std::size_t byte_offset);

  // Offset, in bytes from 0, of the first byte that belongs to no well-formed
  // sequence.
  std::size_t byte_offset() const noexcept { return byte_offset_; }

 private:
  std::size_t byte_offset_;
};

namespace detail {
struct ValueAccess;
}

// A named constant text: a string literal of well-formed UTF-8 without a NUL that
// gains at most 254 bytes when it is escaped, checked and laid out by the compiler. A
// Text of it costs nothing.
class TextLiteral {
 public:
  // Refers to `literal`. Any other text than described above does not compile.
  template <std::size_t kSize>
  // NOLINTNEXTLINE(google-explicit-constructor): a literal is a text.
  consteval TextLiteral(const char (&literal)[kSize])
      : bits_(detail::literal_bits(literal)), view_(literal, kSize - 1) {}

  // The characters of the literal, which never dangle.
  constexpr std::string_view view() const noexcept { return view_; }
  // NOLINTNEXTLINE(google-explicit-constructor): as const char* does.
  constexpr operator std::string_view() const noexcept { return view_; }
  // Literals are equal when their characters are.
  friend constexpr bool operator==(const TextLiteral& a, const TextLiteral& b) noexcept {
    return a.view_ == b.view_;
  }

 private:
  friend class Text;
  friend class TextArgument;

  detail::TextBits bits_;
  std::string_view view_;
};

// A text of up to 2^32 - 1 bytes, immutable but for assignment.
class NEXT_STEPS_API Text {
 public:
  // The empty text.
  constexpr Text() noexcept : bits_(detail::kEmptyText) {}

  // A copy of `bytes`. Throws InvalidUtf8 when they are not well-formed UTF-8,
  // std::length_error when they are too many, and std::bad_alloc.
  // NOLINTBEGIN(google-explicit-constructor): a string is a text.
  Text(std::string_view bytes);
  Text(const std::string& bytes) : Text(std::string_view(bytes)) {}
  // Throws std::invalid_argument for a null pointer.
  Text(const char* bytes);
  Text(const TextLiteral& literal) noexcept : bits_(literal.bits_) {}
  // NOLINTEND(google-explicit-constructor)

  // A copy of `bytes` with each ill-formed piece replaced by U+FFFD. For texts
  // from outside that must not fail: it throws only std::bad_alloc, and
  // std::length_error when they are too many.
  static Text lossy(std::string_view bytes);

  // Copies share a long text and never fail; a moved-from text is empty.
  Text(const Text& other) noexcept : bits_(other.bits_) {
    if (is_shared()) retain();
  }
  Text(Text&& other) noexcept : bits_(std::exchange(other.bits_, detail::kEmptyText)) {}
  Text& operator=(Text other) noexcept {
    swap(other);
    return *this;
  }
  ~Text() {
    if (is_shared()) release();
  }

  // Exchanges the two texts.
  void swap(Text& other) noexcept { std::swap(bits_, other.bits_); }

  // The bytes, valid until this object is assigned to or destroyed.
  std::string_view view() const& noexcept { return bits_.view(); }
  std::string_view view() const&& = delete;

  // The number of bytes.
  std::size_t size() const noexcept { return bits_.size(); }
  // Whether there is no byte.
  bool empty() const noexcept { return size() == 0; }

  // Bytes that the text gains when it is escaped inside a JSON string.
  std::size_t escape_gain() const noexcept {
    return bits_.escape_gain() == detail::kLargeGain ? large_gain() : bits_.escape_gain();
  }

  // Texts are equal when their bytes are, and ordered by bytes, which for UTF-8
  // is the order of code points.
  friend bool operator==(const Text& a, const Text& b) noexcept {
    if (a.bits_.is_inline()) return detail::same_bits(a.bits_, b.bits_);
    return a.view() == b.view();
  }
  friend std::strong_ordering operator<=>(const Text& a, const Text& b) noexcept {
    return a.view() <=> b.view();
  }

 private:
  friend struct detail::ValueAccess;
  friend class TextArgument;

  // Well-formed text whose gain is known.
  Text(std::string_view well_formed, std::size_t escape_gain);
  // The text of `bits`, counting nothing.
  explicit Text(const detail::TextBits& bits) noexcept : bits_(bits) {}

  bool is_shared() const noexcept { return bits_.tag() == detail::Tag::shared_text; }
  void retain() const noexcept;
  void release() const noexcept;
  std::size_t large_gain() const noexcept;

  detail::TextBits bits_;
};

static_assert(sizeof(Text) == 16);

// A parameter that takes any text, for the time of the call. The compiler checks
// a string literal and lays it out; other strings are referred to, not copied.
// What is no TextLiteral does not compile as a literal, nor does a constant array that
// is no compile-time constant: pass a std::string_view of it.
class NEXT_STEPS_API TextArgument {
 public:
  // NOLINTBEGIN(google-explicit-constructor): stands for what it is made of.
  // Of a string literal, and of what else holds well-formed text or characters up to
  // a NUL.
  template <std::size_t kSize>
  consteval TextArgument(const char (&literal)[kSize]) : bits_(detail::literal_bits(literal)) {}
  template <std::size_t kSize>
  TextArgument(char (&characters)[kSize]) : TextArgument(std::string_view(characters)) {}
  TextArgument(const TextLiteral& literal) noexcept : bits_(literal.bits_) {}
  TextArgument(const Text& text) noexcept : bits_(text.bits_) {}
  // Throws std::length_error for more bytes than a text holds.
  TextArgument(std::string_view bytes);
  TextArgument(const std::string& bytes) : TextArgument(std::string_view(bytes)) {}
  // A null pointer is no text: it throws std::invalid_argument.
  template <typename Pointer>
  requires std::same_as<Pointer, const char*> || std::same_as<Pointer, char*> TextArgument(
      const Pointer& characters)
      : TextArgument(non_null(characters)) {}
  // NOLINTEND(google-explicit-constructor)

  // The text. Throws InvalidUtf8 and std::bad_alloc.
  Text text() const { return is_checked() ? checked() : Text(bits_.view()); }
  // The text with each ill-formed piece replaced by U+FFFD. Throws std::bad_alloc.
  Text lossy_text() const { return is_checked() ? checked() : Text::lossy(bits_.view()); }

  // The bytes, valid as long as this object and what it was made of.
  std::string_view view() const noexcept { return bits_.view(); }

 private:
  // The tag of bytes that were not looked at yet.
  static constexpr detail::Tag kUnchecked = detail::Tag::null;

  static std::string_view non_null(const char* characters);
  bool is_checked() const noexcept { return bits_.tag() != kUnchecked; }
  Text checked() const noexcept {
    Text text(bits_);
    if (text.is_shared()) text.retain();
    return text;
  }

  detail::TextBits bits_;
};

}  // namespace vantrex::values

// Text: an immutable UTF-8 string in 16 bytes.
//
// Purpose: the strings and keys of JSON values. A Text is always well-formed UTF-8 and stores how many bytes
// escaping adds, so that measuring an answer reads no string.
//
// Ownership: up to 14 bytes are stored inside the object. The characters of a longer text are shared by all
// copies through an atomic count; those of a literal stay in place. Copying never allocates.
//
// Threads: like an int. Copies may be used, copied and destroyed on different threads; a change of one object
// needs exclusive access.
#pragma once

#include <compare>
#include <concepts>
#include <cstddef>
#include <iosfwd>
#include <stdexcept>
#include <string_view>
#include <type_traits>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/text_bits.h"

namespace vantrex::values {

/// Thrown when a text is made from ill-formed UTF-8.
class NEXT_STEPS_API InvalidUtf8 : public std::invalid_argument {
 public:
  /// The error at `byte_offset`.
  explicit InvalidUtf8(std::size_t byte_offset);

  /// The offset in bytes, from 0, of the first ill-formed byte.
  std::size_t byte_offset() const noexcept { return byte_offset_; }

 private:
  std::size_t byte_offset_;
};

namespace detail {

struct ValueAccess;

/// A string of any type: converts to std::string_view. A null pointer constant does not.
template <typename T>
concept StringLike = std::convertible_to<const T&, std::string_view> && !std::same_as<T, std::nullptr_t>;

/// The characters before the first NUL. Throws std::invalid_argument for a null pointer.
NEXT_STEPS_API std::string_view view_of_pointer(const char* characters);

/// The bytes of `string`. A pointer ends at the first NUL, an array there or at its end.
template <StringLike T>
constexpr std::string_view view_of(const T& string) {
  if constexpr (std::is_array_v<T>) {
    const std::string_view all(string, std::size(string));
    return all.substr(0, all.find('\0'));
  } else if constexpr (std::is_pointer_v<T>) {
    return view_of_pointer(string);
  } else {
    return string;
  }
}

}  // namespace detail

/// A string literal, checked at compile time. It must be well-formed UTF-8 without a NUL, and escaping may
/// add at most 254 bytes. A Text made from it is a copy of 16 bytes.
class TextLiteral {
 public:
  /// Refers to `literal`. Does not compile when a condition above is not met.
  template <std::size_t kSize>
  // NOLINTNEXTLINE(google-explicit-constructor): a literal is a text.
  consteval TextLiteral(const char (&literal)[kSize])
      : bits_(detail::literal_bits(literal)), view_(literal, kSize - 1) {}

  /// The characters of the literal. Always valid.
  constexpr std::string_view view() const noexcept { return view_; }
  /// The characters of the literal. Always valid.
  // NOLINTNEXTLINE(google-explicit-constructor): as const char* does.
  constexpr operator std::string_view() const noexcept { return view_; }
  /// Compares the characters.
  friend constexpr bool operator==(const TextLiteral& a, const TextLiteral& b) noexcept {
    return a.view_ == b.view_;
  }

 private:
  friend class Text;
  friend class TextArgument;

  detail::TextBits bits_;
  std::string_view view_;
};

/// A text of up to 2^32 - 1 bytes. Only assignment changes it.
class NEXT_STEPS_API Text {
 public:
  /// The empty text.
  constexpr Text() noexcept : bits_(detail::kEmptyText) {}

  // NOLINTBEGIN(google-explicit-constructor): a string is a text.
  /// A copy of `bytes`. Throws InvalidUtf8 for ill-formed UTF-8, std::length_error when the text is too long,
  /// and std::bad_alloc.
  Text(std::string_view bytes);
  /// The same for any other string. Throws std::invalid_argument for a null pointer.
  template <detail::StringLike T>
  Text(const T& string) : Text(detail::view_of(string)) {}
  Text(std::nullptr_t) = delete;
  /// The literal. Copies no characters.
  Text(const TextLiteral& literal) noexcept : bits_(literal.bits_) {}
  // NOLINTEND(google-explicit-constructor)

  /// A copy of `bytes` with each ill-formed piece replaced by U+FFFD. Throws std::length_error when the text
  /// is too long, and std::bad_alloc.
  static Text lossy(std::string_view bytes);

  /// Shares the characters of a long text.
  Text(const Text& other) noexcept : bits_(other.bits_) {
    if (is_shared()) retain(bits_);
  }
  /// Takes the text; `other` is then empty.
  Text(Text&& other) noexcept : bits_(std::exchange(other.bits_, detail::kEmptyText)) {}
  /// Copies, or moves from an rvalue.
  Text& operator=(Text other) noexcept {
    swap(*this, other);
    return *this;
  }
  /// Frees shared characters with their last copy.
  ~Text() {
    if (is_shared()) release(bits_);
  }

  /// Exchanges the two texts.
  friend void swap(Text& a, Text& b) noexcept { std::swap(a.bits_, b.bits_); }

  /// The bytes. Valid until this object is assigned to or destroyed.
  std::string_view view() const& noexcept { return bits_.view(); }
  std::string_view view() const&& = delete;

  /// The number of bytes.
  std::size_t size() const noexcept { return bits_.size(); }
  /// Whether there is no byte.
  bool empty() const noexcept { return size() == 0; }

  /// The bytes that escaping adds to the text in a JSON string.
  std::size_t escape_gain() const noexcept {
    return bits_.escape_gain() == detail::kLargeGain ? large_gain() : bits_.escape_gain();
  }

  /// Compares the bytes.
  friend bool operator==(const Text& a, const Text& b) noexcept {
    if (a.bits_.is_inline()) return detail::same_bits(a.bits_, b.bits_);
    return a.view() == b.view();
  }
  /// Compares the bytes. In UTF-8 this is the order of code points.
  friend std::strong_ordering operator<=>(const Text& a, const Text& b) noexcept {
    return a.view() <=> b.view();
  }
  /// Compares the bytes with those of any string, which is neither checked nor copied.
  template <detail::StringLike T>
  friend bool operator==(const Text& a, const T& b) {
    return a.view() == detail::view_of(b);
  }
  /// The same.
  template <detail::StringLike T>
  friend std::strong_ordering operator<=>(const Text& a, const T& b) {
    return a.view() <=> detail::view_of(b);
  }

  /// Writes the bytes, without quotes.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const Text& text);

 private:
  friend struct detail::ValueAccess;
  friend class Integer;
  friend class TextArgument;

  // A copy of well-formed text of at most kMaxTextBytes, with a known escape gain.
  Text(std::string_view well_formed, std::size_t escape_gain);
  // Adopts `bits`; no reference count changes.
  explicit Text(const detail::TextBits& bits) noexcept : bits_(bits) {}

  bool is_shared() const noexcept { return bits_.tag() == detail::Tag::shared_text; }
  // Count the owners of shared characters.
  static void retain(const detail::TextBits& shared) noexcept;
  static void release(const detail::TextBits& shared) noexcept;
  std::size_t large_gain() const noexcept;

  detail::TextBits bits_;
};

static_assert(sizeof(Text) == 16);

/// A function parameter for the bytes of any string, which must outlive the call.
class StringArgument {
 public:
  // NOLINTBEGIN(google-explicit-constructor): stands for its argument.
  /// Any string but a null pointer, for which it throws std::invalid_argument.
  template <detail::StringLike T>
  constexpr StringArgument(const T& string) : bytes_(detail::view_of(string)) {}
  /// A text.
  StringArgument(const Text& text) noexcept : bytes_(text.view()) {}
  /// The bytes.
  constexpr operator std::string_view() const noexcept { return bytes_; }
  // NOLINTEND(google-explicit-constructor)

 private:
  std::string_view bytes_;
};

/// A function parameter for any string that becomes a text. The string must outlive the call. A string
/// literal is checked at compile time, as by TextLiteral. Other strings are referred to and checked by
/// text(). A const char array counts as a literal; when it is no compile-time constant, pass a
/// std::string_view of it.
class NEXT_STEPS_API TextArgument {
 public:
  // NOLINTBEGIN(google-explicit-constructor): stands for its argument.
  /// A string literal.
  template <std::size_t kSize>
  consteval TextArgument(const char (&literal)[kSize]) : bits_(detail::literal_bits(literal)) {}
  /// The characters before the first NUL, or all.
  template <std::size_t kSize>
  TextArgument(char (&characters)[kSize]) : TextArgument(detail::view_of(characters)) {}
  /// A checked literal.
  constexpr TextArgument(const TextLiteral& literal) noexcept : bits_(literal.bits_) {}
  /// A text.
  TextArgument(const Text& text) noexcept : bits_(text.bits_) {}
  /// Unchecked bytes. Throws std::length_error when they are too long for a text.
  TextArgument(std::string_view bytes);
  /// The same for any other string. Throws std::invalid_argument for a null pointer.
  template <detail::StringLike T>
  TextArgument(const T& string) : TextArgument(detail::view_of(string)) {}
  TextArgument(std::nullptr_t) = delete;
  // NOLINTEND(google-explicit-constructor)

  /// The text. Throws InvalidUtf8 for ill-formed UTF-8, and std::bad_alloc.
  Text text() const { return is_checked() ? checked() : Text(bits_.view()); }
  /// The text with each ill-formed piece replaced by U+FFFD. Throws std::bad_alloc.
  Text lossy_text() const { return is_checked() ? checked() : Text::lossy(bits_.view()); }

  /// The bytes. Valid while this object and its argument live.
  std::string_view view() const noexcept { return bits_.view(); }

 private:
  // The tag of bytes that are not checked.
  static constexpr detail::Tag kUnchecked = detail::Tag::null;

  bool is_checked() const noexcept { return bits_.tag() != kUnchecked; }
  Text checked() const noexcept {
    Text text(bits_);
    if (text.is_shared()) Text::retain(bits_);
    return text;
  }

  detail::TextBits bits_;
};

}  // namespace vantrex::values

/// @cond
// Hashes the bytes, as for a std::string_view. Doxygen does not find the scope of this specialization.
template <>
struct std::hash<vantrex::values::Text> {
  std::size_t operator()(const vantrex::values::Text& text) const noexcept {
    return std::hash<std::string_view>()(text.view());
  }
};
/// @endcond

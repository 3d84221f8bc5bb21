// Integer: a whole number of any size.
//
// Purpose: keeps the numbers of an answer exact. A number in the range of std::int64_t is stored as one, any
// other as decimal digits. There is no arithmetic.
//
// Ownership: a value type; copying never allocates. Threads: like an int.
#pragma once

#include <compare>
#include <concepts>
#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/text.h"

namespace vantrex::values {

/// An integer type of at most 64 bits, but not `bool` or a character type.
template <typename T>
concept CountingInteger = std::integral<T> && sizeof(T) <= sizeof(std::int64_t) && !std::same_as<T, bool> &&
                          !std::same_as<T, char> && !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> &&
                          !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

/// A whole number of any size.
class NEXT_STEPS_API Integer {
 public:
  /// Zero.
  Integer() noexcept : Integer(0) {}

  /// The number `value`. Only an unsigned value of 2^63 or more allocates.
  template <CountingInteger T>
  Integer(T value)  // NOLINT(google-explicit-constructor): loses nothing.
      : bits_{.number = {detail::Tag::integer, static_cast<std::int64_t>(value)}} {
    if (!std::in_range<std::int64_t>(value)) *this = large(static_cast<std::uint64_t>(value));
  }

  /// Shares the digits.
  Integer(const Integer& other) noexcept : bits_(other.bits_) {
    if (!is_small()) Text::retain(bits_);
  }
  /// Shares the digits.
  Integer& operator=(Integer other) noexcept {
    std::swap(bits_, other.bits_);
    return *this;
  }
  /// Frees the digits with their last copy.
  ~Integer() {
    if (!is_small()) Text::release(bits_);
  }

  /// Parses an optional "-" and one or more decimal digits; returns nothing for any other text. Drops leading
  /// zeros; "-0" is 0. Linear in the number of digits. Throws std::length_error for 2^32 digits and more, and
  /// std::bad_alloc.
  static std::optional<Integer> parse(std::string_view text);

  /// The value as a T, or nothing when it is out of range.
  template <CountingInteger T>
  std::optional<T> to() const noexcept {
    if (is_small()) return std::in_range<T>(small()) ? std::optional(static_cast<T>(small())) : std::nullopt;
    const std::optional<std::uint64_t> number = to_unsigned();
    return number && std::in_range<T>(*number) ? std::optional(static_cast<T>(*number)) : std::nullopt;
  }

  /// The decimal digits, with a leading "-" when negative.
  std::string digits() const;

  /// Compares the numbers.
  friend bool operator==(const Integer& a, const Integer& b) noexcept { return (a <=> b) == 0; }
  /// Compares the numbers.
  friend NEXT_STEPS_API std::strong_ordering operator<=>(const Integer& a, const Integer& b) noexcept;
  /// Compares the numbers. Allocates nothing, whatever `b` is.
  template <CountingInteger T>
  friend bool operator==(const Integer& a, T b) noexcept {
    return a.to<T>() == b;
  }
  /// The same.
  template <CountingInteger T>
  friend std::strong_ordering operator<=>(const Integer& a, T b) noexcept {
    if (const std::optional<T> number = a.to<T>()) return *number <=> b;
    return a.is_negative() ? std::strong_ordering::less : std::strong_ordering::greater;
  }

  /// Writes the digits.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const Integer& number);

 private:
  friend struct detail::ValueAccess;

  // A number outside the range of std::int64_t: digits without leading zeros, after "-" when negative.
  explicit Integer(Text digits) noexcept;
  static Integer large(std::uint64_t value);

  bool is_small() const noexcept { return bits_.tag() == detail::Tag::integer; }
  std::int64_t small() const noexcept { return bits_.number.value; }
  bool is_negative() const noexcept { return is_small() ? small() < 0 : bits_.view().front() == '-'; }
  std::optional<std::uint64_t> to_unsigned() const noexcept;

  detail::TextBits bits_;  // a number, or the bits of a shared text with the tag big_integer
};

static_assert(sizeof(Integer) == 16);

}  // namespace vantrex::values

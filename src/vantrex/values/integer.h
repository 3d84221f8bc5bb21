// Integer: a whole number of any size.
//
// Purpose: keeps the numbers of an answer exact. A number in the range of std::int64_t is stored as one, any
// other as decimal digits. There is no arithmetic.
//
// Ownership: a value type; copying never allocates. Threads: like an int.
#pragma once

#include <charconv>
#include <compare>
#include <concepts>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
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
  Integer() noexcept = default;

  /// The number `value`. Only an unsigned value of 2^63 or more allocates.
  template <CountingInteger T>
  Integer(T value) {  // NOLINT(google-explicit-constructor): loses nothing.
    if constexpr (sizeof(T) >= sizeof(std::int64_t) && std::unsigned_integral<T>) {
      if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        digits_ = Text(std::to_string(value));
        return;
      }
    }
    small_ = static_cast<std::int64_t>(value);
  }

  /// Parses an optional "-" and one or more decimal digits; returns nothing for any other text. Drops leading
  /// zeros; "-0" is 0. Linear in the number of digits. Throws std::length_error for 2^32 digits and more, and
  /// std::bad_alloc.
  static std::optional<Integer> parse(std::string_view text);

  /// The value as a T, or nothing when it is out of range.
  template <CountingInteger T>
  std::optional<T> to() const noexcept {
    if (is_small()) return std::in_range<T>(small_) ? std::optional(static_cast<T>(small_)) : std::nullopt;
    T value = 0;
    const std::string_view digits = digits_.view();
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return read.ec == std::errc() ? std::optional(value) : std::nullopt;
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

 private:
  friend struct detail::ValueAccess;

  // A number outside the range of std::int64_t: digits without leading zeros, after "-" when negative.
  explicit Integer(Text digits) noexcept : digits_(std::move(digits)) {}

  bool is_small() const noexcept { return digits_.empty(); }
  bool is_negative() const noexcept { return is_small() ? small_ < 0 : digits_.view().front() == '-'; }

  std::int64_t small_ = 0;
  Text digits_;  // empty when the number is in small_
};

}  // namespace vantrex::values

// Integer: a whole number without bound.
//
// Purpose: counts and numbers of an answer survive exactly, whatever their
// size. What fits in 64 bits is held there, the rest as decimal digits; there
// is no arithmetic.
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

// The integer types that count, as against `bool` and the character types; none
// of more than 64 bits.
template <typename T>
concept CountingInteger = std::integral<T> && sizeof(T) <= sizeof(std::int64_t) && !std::same_as<T, bool> &&
                          !std::same_as<T, char> && !std::same_as<T, wchar_t> && !std::same_as<T, char8_t> &&
                          !std::same_as<T, char16_t> && !std::same_as<T, char32_t>;

// A whole number: 0 unless made of another.
class NEXT_STEPS_API Integer {
 public:
  // The number 0.
  Integer() noexcept = default;

  // Never fails for a type of up to 64 signed bits; a larger unsigned value may
  // throw std::bad_alloc.
  template <CountingInteger T>
  Integer(T value) {  // NOLINT(google-explicit-constructor): a number is an integer.
    if constexpr (sizeof(T) >= sizeof(std::int64_t) && std::unsigned_integral<T>) {
      if (value > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
        digits_ = Text(std::to_string(value));
        return;
      }
    }
    small_ = static_cast<std::int64_t>(value);
  }

  // The integer that `text` writes: an optional "-", then one or more decimal
  // digits. Leading zeros are dropped, "-0" is 0. Nothing for any other text.
  // Takes time linear in the digits.
  static std::optional<Integer> parse(std::string_view text);

  // The value as a T, or nothing where T does not hold it.
  template <CountingInteger T>
  std::optional<T> to() const noexcept {
    if (is_small()) return std::in_range<T>(small_) ? std::optional(static_cast<T>(small_)) : std::nullopt;
    T value = 0;
    const std::string_view digits = digits_.view();
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return read.ec == std::errc() ? std::optional(value) : std::nullopt;
  }

  // The decimal digits, with a leading "-" when negative.
  std::string digits() const;

  // By their numbers, however they are held.
  friend bool operator==(const Integer& a, const Integer& b) noexcept { return (a <=> b) == 0; }
  friend NEXT_STEPS_API std::strong_ordering operator<=>(const Integer& a, const Integer& b) noexcept;

 private:
  friend struct detail::ValueAccess;

  // What exceeds 64 bits, as canonical digits.
  explicit Integer(Text digits) noexcept : digits_(std::move(digits)) {}

  bool is_small() const noexcept { return digits_.empty(); }
  bool is_negative() const noexcept { return is_small() ? small_ < 0 : digits_.view().front() == '-'; }

  std::int64_t small_ = 0;
  Text digits_;  // empty for what fits in small_
};

}  // namespace vantrex::values

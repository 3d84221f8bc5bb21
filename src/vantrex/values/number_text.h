// The JSON text of numbers.
//
// Pure functions without state: any number of threads may call them.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace vantrex::values {

// The longest text of a float, "-2.2250738585072014e-308", and more than that of
// a 64-bit integer.
inline constexpr std::size_t kMaxNumberBytes = 24;

// Writes the shortest digits that read back as the same double: positional with a
// point from 0.0001 to below 1e16, with an exponent of at least two digits
// otherwise; NaN, Infinity and -Infinity. `out` has room for kMaxNumberBytes;
// returns the end of the text.
char* write_float(double value, char* out) noexcept;

// Writes the decimal digits of `value`, with a "-" when negative, likewise.
char* write_integer(std::int64_t value, char* out) noexcept;

// The bytes of the text of a float, which is written to find out.
std::size_t float_text_size(double value) noexcept;

namespace detail {

// 10 to the power of the place.
inline constexpr auto kPowersOfTen = [] {
  std::array<std::uint64_t, 20> powers{1};
  for (std::size_t place = 1; place < powers.size(); ++place) powers[place] = 10 * powers[place - 1];
  return powers;
}();

}  // namespace detail

// The bytes of the text of an integer.
constexpr std::size_t integer_text_size(std::int64_t value) noexcept {
  const auto bits = static_cast<std::uint64_t>(value);
  const std::uint64_t magnitude = (value < 0 ? 0 - bits : bits) | 1;  // which has as many digits
  // 1233 / 4096 is a little over the decimal digits that one bit is worth.
  const auto digits = static_cast<std::size_t>(std::bit_width(magnitude) * 1233 >> 12);
  return digits + (magnitude >= detail::kPowersOfTen[digits] ? 1U : 0U) + (value < 0 ? 1U : 0U);
}

}  // namespace vantrex::values

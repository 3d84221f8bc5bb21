// The JSON text of numbers.
//
// Pure functions without state: any number of threads may call them.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vantrex::values {

// Room for the text of any float or 64-bit integer.
using NumberBuffer = std::array<char, 32>;

// The text of `value`, in `buffer`: the shortest digits that read back as the
// same double; positional with a point from 0.0001 to below 1e16, with an
// exponent of at least two digits otherwise; NaN, Infinity and -Infinity.
std::string_view float_text(double value, NumberBuffer& buffer) noexcept;

// The decimal digits of `value`, in `buffer`, with a "-" when negative.
std::string_view integer_text(std::int64_t value, NumberBuffer& buffer) noexcept;

namespace detail {

// 10 to the power of the place.
inline constexpr auto kPowersOfTen = [] {
  std::array<std::uint64_t, 20> powers{1};
  for (std::size_t place = 1; place < powers.size(); ++place) powers[place] = 10 * powers[place - 1];
  return powers;
}();

}  // namespace detail

// The bytes of that text.
constexpr std::size_t integer_text_size(std::int64_t value) noexcept {
  const auto bits = static_cast<std::uint64_t>(value);
  const std::uint64_t magnitude = (value < 0 ? 0 - bits : bits) | 1;  // which has as many digits
  // 1233 / 4096 is a little over the decimal digits that one bit is worth.
  const auto digits = static_cast<std::size_t>(std::bit_width(magnitude) * 1233 >> 12);
  return digits + (magnitude >= detail::kPowersOfTen[digits] ? 1U : 0U) + (value < 0 ? 1U : 0U);
}

}  // namespace vantrex::values

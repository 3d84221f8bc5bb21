// The JSON text of numbers.
//
// Pure functions: any number of threads may call them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vantrex::values {

// The maximum size of a number's text: that of the float "-2.2250738585072014e-308".
inline constexpr std::size_t kMaxNumberBytes = 24;

// Writes the shortest digits that read back as the same double. A magnitude of 0, or from 0.0001 to below
// 1e16, has a point and no exponent; any other has an exponent of at least two digits. Also writes NaN,
// Infinity and -Infinity. `out` must have room for kMaxNumberBytes. Returns the end of the text.
char* write_float(double value, char* out) noexcept;

// Writes the decimal digits of `value`, with a leading "-" when negative. `out` and the result as above.
char* write_integer(std::int64_t value, char* out) noexcept;

// The size of a float's text in bytes. Costs as much as writing it.
std::size_t float_text_size(double value) noexcept;

// The size of an integer's text in bytes.
constexpr std::size_t integer_text_size(std::int64_t value) noexcept {
  std::size_t size = value < 0 ? 2 : 1;
  const auto bits = static_cast<std::uint64_t>(value);
  const std::uint64_t magnitude = value < 0 ? 0 - bits : bits;  // at most 2^63, so `power` does not overflow
  for (std::uint64_t power = 10; power <= magnitude; power *= 10) ++size;
  return size;
}

}  // namespace vantrex::values

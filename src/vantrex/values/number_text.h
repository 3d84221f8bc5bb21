// The JSON text of numbers.
//
// Pure functions without state: any number of threads may call them.
#pragma once

#include <array>
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

// The bytes of that text.
std::size_t integer_text_size(std::int64_t value) noexcept;

}  // namespace vantrex::values

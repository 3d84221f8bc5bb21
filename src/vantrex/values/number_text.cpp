#include "vantrex/values/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace vantrex::values {

static_assert(std::numeric_limits<double>::is_iec559);

namespace {

// Writes `magnitude`, 0 or at least 0.0001, if it has at most nine digits before the point and six after it.
// Otherwise returns a null pointer. Most floats in answers are scores rounded to a few places. The result is
// the shortest form: two different decimals of at most 15 digits never read back as the same double.
char* write_rounded(double magnitude, char* out) noexcept {
  constexpr int kPlaces = 6;
  constexpr std::int64_t kScale = 1'000'000;
  if (!(magnitude < 1e9)) return nullptr;
  // NOLINTNEXTLINE(bugprone-incorrect-roundings): the next check rejects a wrong result.
  const auto scaled = static_cast<std::int64_t>(magnitude * kScale + 0.5);
  if (static_cast<double>(scaled) / kScale != magnitude) return nullptr;

  out = std::to_chars(out, out + kPlaces + 4, scaled / kScale).ptr;
  *out++ = '.';
  auto fraction = static_cast<int>(scaled % kScale);
  for (int place = kPlaces; place > 0; --place, fraction /= 10)
    out[place - 1] = static_cast<char>('0' + fraction % 10);
  out += kPlaces;
  while (out[-1] == '0' && out[-2] != '.') --out;
  return out;
}

char* append(std::string_view text, char* out) noexcept {
  return std::copy(text.begin(), text.end(), out);
}

}  // namespace

char* write_float(double value, char* out) noexcept {
  if (std::isnan(value)) return append("NaN", out);
  if (std::isinf(value)) return append(value < 0 ? "-Infinity" : "Infinity", out);

  constexpr double kMinPositional = 1e-4;
  constexpr double kMinExponential = 1e16;
  if (std::signbit(value)) *out++ = '-';
  const double magnitude = std::abs(value);
  const bool is_positional = value == 0 || (kMinPositional <= magnitude && magnitude < kMinExponential);
  if (is_positional) {
    if (char* end = write_rounded(magnitude, out)) return end;
  }
  char* end = std::to_chars(out, out + kMaxNumberBytes - 1, magnitude,
                            is_positional ? std::chars_format::fixed : std::chars_format::scientific)
                  .ptr;
  return is_positional && std::find(out, end, '.') == end ? append(".0", end) : end;
}

char* write_integer(std::int64_t value, char* out) noexcept {
  return std::to_chars(out, out + kMaxNumberBytes, value).ptr;
}

std::size_t float_text_size(double value) noexcept {
  std::array<char, kMaxNumberBytes> text;
  return static_cast<std::size_t>(write_float(value, text.data()) - text.data());
}

}  // namespace vantrex::values

#include "vantrex/values/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace vantrex::values {

namespace {

// Writes a magnitude of at least 0.0001 that has at most nine digits before the
// point and six after it; null for any other. Most floats of answers are scores
// rounded to a few places. At most 15 digits make it the shortest form: no other
// decimal of so few reads back as the same double.
char* put_rounded(double magnitude, char* out) noexcept {
  constexpr int kPlaces = 6;
  constexpr std::int64_t kScale = 1'000'000;
  if (!(magnitude < 1e9)) return nullptr;
  // NOLINTNEXTLINE(bugprone-incorrect-roundings): a wrong one does not give `magnitude` back.
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

}  // namespace

std::string_view float_text(double value, NumberBuffer& buffer) noexcept {
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";

  constexpr double kLeastPositional = 1e-4;
  constexpr double kLeastLarge = 1e16;
  const double magnitude = std::abs(value);
  const bool positional = value == 0 || (kLeastPositional <= magnitude && magnitude < kLeastLarge);
  char* const begin = buffer.data();
  if (positional) {
    char* digits = begin;
    if (std::signbit(value)) *digits++ = '-';
    if (const char* end = put_rounded(magnitude, digits))
      return {begin, static_cast<std::size_t>(end - begin)};
  }
  char* end = std::to_chars(begin, begin + buffer.size(), value,
                            positional ? std::chars_format::fixed : std::chars_format::scientific)
                  .ptr;
  if (positional && std::find(begin, end, '.') == end) {
    *end++ = '.';
    *end++ = '0';
  }
  return {begin, static_cast<std::size_t>(end - begin)};
}

std::string_view integer_text(std::int64_t value, NumberBuffer& buffer) noexcept {
  const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

}  // namespace vantrex::values

#include "requests/number_text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <string>
#include <system_error>

namespace next_steps_requests {

namespace {

constexpr std::string_view kNotZero = "123456789";

// Moves `at` behind the digits there. Returns whether there are any.
bool skip_digits(const char*& at) noexcept {
  const char* const begin = at;
  while (*at >= '0' && *at <= '9') ++at;
  return at != begin;
}

// Returns the exponent in "", "e5" or "E-05". One that exceeds the length of any text is cut.
std::int64_t exponent_of(std::string_view part) {
  constexpr std::int64_t kLimit = std::numeric_limits<std::int64_t>::max() / 2;
  const std::string_view digits = part.substr(std::min(part.find_first_of(kNotZero), part.size()));
  std::int64_t exponent = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), exponent);
  exponent = read.ec == std::errc::result_out_of_range ? kLimit : std::min(exponent, kLimit);
  return part.find('-') == std::string_view::npos ? exponent : -exponent;
}

// Returns a number of less than 800 bytes with the same nearest double: "0.DIGITSeEXPONENT".
std::string shortened(std::string_view number) {
  constexpr std::size_t kDigits = 768;  // as many decide on which side of a middle of two doubles a number is
  constexpr std::int64_t kExponent = 1000;  // out of range, whatever the digits are
  const std::size_t end = std::min(number.find_first_of("eE"), number.size());
  const std::string_view mantissa = number.substr(0, end);
  const std::size_t point = std::min(mantissa.find('.'), end);
  std::size_t at = mantissa.find_first_of(kNotZero);
  std::string text = number.starts_with('-') ? "-0." : "0.";
  if (at == std::string_view::npos) return text + '0';
  const auto shift = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(at) + (at > point ? 1 : 0);
  for (std::size_t count = 0; at < end && count < kDigits; ++at) {
    if (at == point) continue;
    text += mantissa[at];
    ++count;
  }
  if (mantissa.find_first_of(kNotZero, at) != std::string_view::npos) text += '1';
  return text + 'e' +
         std::to_string(std::clamp(exponent_of(number.substr(end)) + shift, -kExponent, kExponent));
}

}  // namespace

NumberScan scan_number(const char* text) noexcept {
  const char* at = text;
  const auto result = [&](bool is_integer, const char* error) {
    return NumberScan{static_cast<std::size_t>(at - text), is_integer, error};
  };
  if (*at == '-') ++at;
  if (*at == '0') {
    ++at;
  } else if (!skip_digits(at)) {
    return result(false, "Invalid value.");
  }
  if (*at != '.' && *at != 'e' && *at != 'E') return result(true, nullptr);
  if (*at == '.' && !skip_digits(++at)) return result(false, "Miss fraction part in number.");
  if (*at == 'e' || *at == 'E') {
    ++at;
    if (*at == '+' || *at == '-') ++at;
    if (!skip_digits(at)) return result(false, "Miss exponent in number.");
  }
  return result(false, nullptr);
}

double nearest_double(std::string_view number) {
  // For a number out of range, std::from_chars does not say on which side. It also cuts an exponent of ten
  // digits, which matters in a number with as many zeros.
  constexpr std::size_t kShort = 1000;
  const auto converts = [](std::string_view text, double& value) {
    return std::from_chars(text.data(), text.data() + text.size(), value).ec == std::errc();
  };
  double value = 0;
  if (number.size() <= kShort && converts(number, value)) return value;
  const std::string text = shortened(number);
  if (converts(text, value)) return value;
  value = text.find("e-") == std::string::npos ? std::numeric_limits<double>::infinity() : 0.0;
  return text.front() == '-' ? -value : value;
}

}  // namespace next_steps_requests

#include "requests/number_text.h"

#include <charconv>
#include <clocale>
#include <cstdlib>
#include <string>
#include <system_error>

namespace next_steps_requests {

namespace {

// Moves `at` behind the digits there. Returns whether there are any.
bool skip_digits(const char*& at) noexcept {
  const char* const begin = at;
  while (*at >= '0' && *at <= '9') ++at;
  return at != begin;
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
  double value = 0;
  if (number.size() <= kShort &&
      std::from_chars(number.data(), number.data() + number.size(), value).ec == std::errc()) {
    return value;
  }
  static const locale_t kCLocale = ::newlocale(LC_ALL_MASK, "C", nullptr);
  return ::strtod_l(std::string(number).c_str(), nullptr, kCLocale);
}

}  // namespace next_steps_requests

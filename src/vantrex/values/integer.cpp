#include "vantrex/values/integer.h"

#include <algorithm>
#include <charconv>

namespace vantrex::values {

std::optional<Integer> Integer::parse(std::string_view text) {
  const bool negative = text.starts_with('-');
  std::string_view digits = text.substr(negative ? 1 : 0);
  const auto is_digit = [](char c) { return '0' <= c && c <= '9'; };
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), is_digit)) return std::nullopt;
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));

  const std::string canonical = (negative ? "-" : "") + std::string(digits);
  std::int64_t value = 0;
  const char* end = canonical.data() + canonical.size();
  if (std::from_chars(canonical.data(), end, value).ec == std::errc{}) return Integer(value);
  return Integer(Text(canonical));
}

std::string Integer::digits() const {
  return is_small() ? std::to_string(small_) : std::string(digits_.view());
}

std::strong_ordering operator<=>(const Integer& a, const Integer& b) noexcept {
  if (a.is_small() && b.is_small()) return a.small_ <=> b.small_;
  if (a.is_negative() != b.is_negative()) {
    return a.is_negative() ? std::strong_ordering::less : std::strong_ordering::greater;
  }
  // The signs are equal, and at least one number has digits. More digits are a larger magnitude; a small
  // integer has no digits.
  const auto magnitude = a.digits_.size() != b.digits_.size() ? a.digits_.size() <=> b.digits_.size()
                                                              : a.digits_.view() <=> b.digits_.view();
  return a.is_negative() ? 0 <=> magnitude : magnitude;
}

}  // namespace vantrex::values

#include "vantrex/values/integer.h"

#include <algorithm>
#include <charconv>
#include <ostream>
#include <system_error>

namespace vantrex::values {

namespace {

// The number that all of `digits` state, or nothing when it is out of range.
template <typename T>
std::optional<T> number(std::string_view digits) noexcept {
  T value = 0;
  const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

}  // namespace

Integer::Integer(Text digits) noexcept : bits_(std::exchange(digits.bits_, detail::kEmptyText)) {
  bits_.out.head.tag = detail::Tag::big_integer;
}

std::optional<Integer> Integer::parse(std::string_view text) {
  const bool negative = text.starts_with('-');
  std::string_view digits = text.substr(negative ? 1 : 0);
  const auto is_digit = [](char c) { return '0' <= c && c <= '9'; };
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), is_digit)) return std::nullopt;
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));

  const std::string canonical = (negative ? "-" : "") + std::string(digits);
  if (const auto small = number<std::int64_t>(canonical)) return *small;
  return Integer(Text(canonical));
}

Integer Integer::large(std::uint64_t value) {
  return Integer(Text(std::to_string(value)));
}

std::optional<std::uint64_t> Integer::to_unsigned() const noexcept {
  return number<std::uint64_t>(bits_.view());
}

std::string Integer::digits() const {
  return is_small() ? std::to_string(small()) : std::string(bits_.view());
}

std::strong_ordering operator<=>(const Integer& a, const Integer& b) noexcept {
  if (a.is_small() && b.is_small()) return a.small() <=> b.small();
  if (a.is_negative() != b.is_negative()) {
    return a.is_negative() ? std::strong_ordering::less : std::strong_ordering::greater;
  }
  // The signs are equal, and a number with digits has the larger magnitude. More digits are a larger one,
  // too.
  const auto digits = [](const Integer& number) {
    return number.is_small() ? std::string_view() : number.bits_.view();
  };
  const auto magnitude =
      digits(a).size() != digits(b).size() ? digits(a).size() <=> digits(b).size() : digits(a) <=> digits(b);
  return a.is_negative() ? 0 <=> magnitude : magnitude;
}

std::ostream& operator<<(std::ostream& out, const Integer& number) {
  return out << number.digits();
}

}  // namespace vantrex::values

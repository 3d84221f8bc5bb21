#include "vantrex/values/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace vantrex::values {

namespace {

// The shortest digits of a finite number, and the power of ten of the first.
struct Decimal {
  NumberBuffer digits;
  int count;
  int exponent;
};

Decimal shortest_decimal(double magnitude) noexcept {
  NumberBuffer scientific;  // d.ddde[+-]xx
  const char* end = std::to_chars(scientific.data(), scientific.data() + scientific.size(), magnitude,
                                  std::chars_format::scientific)
                        .ptr;
  const char* e = std::find(static_cast<const char*>(scientific.data()), end, 'e');
  Decimal decimal{{}, 0, 0};
  for (const char* c = scientific.data(); c != e; ++c) {
    if (*c != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = *c;
  }
  std::from_chars(e[1] == '+' ? e + 2 : e + 1, end, decimal.exponent);
  return decimal;
}

class Layout {
 public:
  explicit Layout(NumberBuffer& buffer) noexcept : begin_(buffer.data()), end_(buffer.data()) {}

  void put(char c) noexcept { *end_++ = c; }
  void zeros(int count) noexcept { end_ = std::fill_n(end_, std::max(count, 0), '0'); }
  void digits(const Decimal& decimal, int from, int to) noexcept {
    if (from < to) end_ = std::copy(decimal.digits.data() + from, decimal.digits.data() + to, end_);
  }
  void integer(int value) noexcept { end_ = std::to_chars(end_, end_ + 4, value).ptr; }

  std::string_view text() const noexcept { return {begin_, static_cast<std::size_t>(end_ - begin_)}; }

 private:
  char* begin_;
  char* end_;
};

void lay_out_positional(Layout& out, const Decimal& decimal) noexcept {
  const int whole = decimal.exponent + 1;  // digits before the point
  if (whole <= 0) {
    out.put('0');
    out.put('.');
    out.zeros(-whole);
    out.digits(decimal, 0, decimal.count);
    return;
  }
  out.digits(decimal, 0, std::min(whole, decimal.count));
  out.zeros(whole - decimal.count);
  out.put('.');
  out.digits(decimal, whole, decimal.count);
  if (whole >= decimal.count) out.put('0');
}

void lay_out_exponent(Layout& out, const Decimal& decimal) noexcept {
  out.digits(decimal, 0, 1);
  if (decimal.count > 1) out.put('.');
  out.digits(decimal, 1, decimal.count);
  out.put('e');
  out.put(decimal.exponent < 0 ? '-' : '+');
  if (std::abs(decimal.exponent) < 10) out.put('0');
  out.integer(std::abs(decimal.exponent));
}

}  // namespace

std::string_view float_text(double value, NumberBuffer& buffer) noexcept {
  constexpr int kLeastPositional = -4;
  constexpr int kLeastLarge = 16;
  if (std::isnan(value)) return "NaN";
  if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";

  Layout out(buffer);
  if (std::signbit(value)) out.put('-');
  const Decimal decimal = shortest_decimal(std::abs(value));
  if (kLeastPositional <= decimal.exponent && decimal.exponent < kLeastLarge) {
    lay_out_positional(out, decimal);
  } else {
    lay_out_exponent(out, decimal);
  }
  return out.text();
}

std::string_view integer_text(std::int64_t value, NumberBuffer& buffer) noexcept {
  const char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

std::size_t integer_text_size(std::int64_t value) noexcept {
  auto magnitude = static_cast<std::uint64_t>(value);
  std::size_t size = 1;
  if (value < 0) {
    magnitude = 0 - magnitude;
    ++size;
  }
  for (; magnitude >= 10000; magnitude /= 10000) size += 4;
  for (; magnitude >= 10; magnitude /= 10) ++size;
  return size;
}

}  // namespace vantrex::values

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "fuzz/support/naive.h"
#include "support/table.h"
#include "vantrex/values/integer.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/number_text.h"

namespace vantrex::values {
namespace {

using tests::words;

TEST(Integer, ParsesDecimalDigits) {
  for (const auto& row : tests::table(R"(
-000 | 0
-9223372036854775808 | -9223372036854775808
-0009223372036854775809 | -9223372036854775809
00000000000000000000001 | 1
- | none
 | none
+1 | none
1.0 | none
1: | none
 1 | none
--1 | none
)")) {
    const auto integer = Integer::parse(row.at(0));
    EXPECT_EQ(integer ? integer->digits() : "none", row.at(1)) << row.at(0);
  }
  const std::string huge(1'000'000, '7');
  EXPECT_EQ(Integer::parse("-00" + huge)->digits(), "-" + huge);
}

TEST(Integer, ConvertsWithinTheRangeOfAType) {
  constexpr auto kMax = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(JsonValue(kMax).integer<std::uint64_t>(), kMax);
  EXPECT_EQ(JsonValue(kMax).integer<std::int64_t>(), std::nullopt);
  EXPECT_EQ(JsonValue(255).integer<std::uint8_t>(), 255);
  EXPECT_EQ(JsonValue(256).integer<std::uint8_t>(), std::nullopt);
  EXPECT_EQ(JsonValue(25.0).integer<std::uint8_t>(), std::nullopt);
  EXPECT_EQ(Integer(-1).to<std::uint64_t>(), std::nullopt);
}

TEST(Integer, IsOrderedByValue) {
  const auto ascending = words(
      "-100000000000000000000 -99999999999999999999 -9223372036854775809 -9223372036854775808 -1 0 7 "
      "9223372036854775807 9223372036854775808 99999999999999999999 100000000000000000000");
  for (const auto& a : ascending) {
    for (const auto& b : ascending)
      EXPECT_EQ(*Integer::parse(a) <=> *Integer::parse(b), &a <=> &b) << a << " " << b;
    for (const std::uint64_t b : {std::uint64_t{0}, std::uint64_t{7}, ~std::uint64_t{0}}) {
      EXPECT_EQ(*Integer::parse(a) <=> b, *Integer::parse(a) <=> Integer(b)) << a << " " << b;
      EXPECT_EQ(b == *Integer::parse(a), *Integer::parse(a) == Integer(b)) << a << " " << b;
    }
  }
}

std::string text_of(double value) {
  char text[kMaxNumberBytes];
  EXPECT_EQ(float_text_size(value), static_cast<std::size_t>(write_float(value, text) - text));
  return {text, write_float(value, text)};
}

TEST(FloatText, IsTheShortestThatReadsBack) {
  for (const std::string& text :
       words("0.0 -0.0 2.5 100.0 0.30000000000000004 0.0001 1e-05 -1.5e-07 9.999e-05 "
             "123456.789 1e+16 2.5e+16 1234567890123456.0 9007199254740992.0 1e+100 "
             "5e-324 2.2250738585072014e-308 -1.7976931348623157e+308 "
             "0.00012345678901234567 NaN Infinity -Infinity")) {
    EXPECT_EQ(text_of(std::strtod(text.c_str(), nullptr)), text);
  }
  std::mt19937_64 random(1);
  for (int round = 0; round < 20000; ++round) {
    // Half of the values have magnitudes that are written with a point.
    double value = std::bit_cast<double>(random());
    if (round % 2 == 0)
      value = std::ldexp(static_cast<double>(random() % 100000), static_cast<int>(random() % 64) - 32);
    ASSERT_EQ(text_of(value), fuzz::naive::json_text(value));
    if (std::isnan(value)) continue;
    ASSERT_EQ(std::strtod(text_of(value).c_str(), nullptr), value);
  }
}

}  // namespace
}  // namespace vantrex::values

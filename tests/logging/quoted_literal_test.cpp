#include "vantrex/logging/quoted_literal.h"

#include <random>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "vantrex/values/utf8.h"

namespace vantrex::logging {
namespace {

using namespace std::string_literals;

TEST(QuotedLiteral, EscapesWhatWouldMislead) {
  const std::pair<std::string, std::string> kRows[] = {
      {"", "''"},
      {"it's", R"("it's")"},
      {R"(say "x")", R"('say "x"')"},
      {R"(it's "x")", R"('it\'s "x"')"},
      {R"(C:\new)", R"('C:\\new')"},
      {"\n\r\t\x1b[2J\x7f\0"s, R"('\n\r\t\x1b[2J\x7f\x00')"},
      {"\u0080\u0085\u009f\u00a0 \u2027\u2028\u2029\u202a",
       "'\\u0080\\u0085\\u009f\u00a0 \u2027\\u2028\\u2029\u202a'"},
      {"na\u00efve \U0001F600", "'na\u00efve \U0001F600'"},
      {"\xff\xc3(\xed\xa0\x80\xe2\x80", R"('\xff\xc3(\xed\xa0\x80\xe2\x80')"},
  };
  for (const auto& [bytes, literal] : kRows) EXPECT_EQ(quoted_literal(bytes), literal);
  EXPECT_EQ(printable("a\\'\"\nb\x85"), R"(a\'"\nb\x85)");
}

TEST(QuotedLiteral, IsOneWellFormedLineForAnyBytes) {
  constexpr std::string_view kTrouble = "'\"\\\n\r\xc2\x85\xe2\x80\xa8\xa9\xf0\x1b";
  std::mt19937 random(1);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes;
    while (random() % 12 != 0) bytes += kTrouble[random() % kTrouble.size()];
    const std::string literal = quoted_literal(bytes);
    ASSERT_EQ(values::scan_utf8(literal).well_formed, literal.size()) << printable(bytes);
    for (const std::string_view line_break : {"\n", "\r", "\x1b", "\u0085", "\u2028", "\u2029"}) {
      ASSERT_EQ(literal.find(line_break), std::string::npos) << literal;
    }
    // The quote that closes the literal is the only one that is not escaped.
    std::size_t end = 1;
    while (literal.at(end) != literal[0]) end += literal[end] == '\\' ? 2U : 1U;
    ASSERT_EQ(end + 1, literal.size()) << literal;
  }
}

}  // namespace
}  // namespace vantrex::logging

#include <exception>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "vantrex/logging/logger.h"
#include "vantrex/logging/quoted_literal.h"
#include "vantrex/values/utf8.h"

namespace vantrex::logging {
namespace {

using namespace std::string_literals;

constexpr Logger kLogger("vantrex.test");

class LoggerTest : public testing::Test {
 protected:
  ~LoggerTest() override { set_sink({}); }
};

struct Textless {};

// An error with a chain of three causes. Two of them have no text.
std::exception_ptr nested_error() {
  const auto led_to = [](const std::exception_ptr& cause, const auto& error) {
    try {
      try {
        std::rethrow_exception(cause);
      } catch (...) {
        std::throw_with_nested(error);
      }
    } catch (...) {
      return std::current_exception();
    }
  };
  const std::exception_ptr textless = led_to(std::make_exception_ptr(7), Textless());
  return led_to(led_to(textless, std::runtime_error("disk\ngone")), std::logic_error("index unreadable"));
}

TEST_F(LoggerTest, DefaultSinkWritesTheErrorAndItsCauses) {
  set_sink([](const Record&) { FAIL() << "the sink was replaced"; });
  set_sink({});
  testing::internal::CaptureStderr();
  kLogger.warning("no place", "x", std::make_exception_ptr(std::runtime_error("plain")));
  kLogger.warning("Looking near %r failed", "a\nb", nested_error());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), R"(WARNING vantrex.test: no place
  error: plain
WARNING vantrex.test: Looking near 'a\nb' failed
  error: index unreadable
  caused by: disk\ngone
  caused by: an error without a text
  caused by: an error without a text
)");
}

TEST_F(LoggerTest, IgnoresWhatASinkThrows) {
  set_sink([](const Record& record) {
    EXPECT_EQ(record.message, "near \"it's %r\" 100%");
    throw 1;
  });
  kLogger.warning("near %r 100%", "it's %r", nullptr);
  set_sink([](const Record& /*record*/) {
    set_sink({});  // from inside the sink
    throw std::runtime_error("ignored");
  });
  kLogger.warning("lost", nullptr);
}

TEST_F(LoggerTest, SendsTheFormatWhenMemoryRunsOut) {
  const std::string wanted(100, 'w');
  bool quoted = false;
  bool unquoted = false;
  set_sink([&](const Record& record) {
    quoted = record.message.size() == wanted.size() + 7;
    unquoted = unquoted || record.message == "near %r";
  });
  tests::fail_each_allocation(
      [&] {
        kLogger.warning("near %r", wanted, nullptr);
        if (!quoted) throw std::bad_alloc();
      },
      [] {});
  EXPECT_TRUE(quoted && unquoted);
}

TEST(QuotedLiteral, EscapesQuotesAndUnprintableBytes) {
  const std::pair<std::string, std::string> kRows[] = {
      {"", "''"},
      {"it's", R"("it's")"},
      {R"(say "x")", R"('say "x"')"},
      {R"(it's "x")", R"('it\'s "x"')"},
      {R"(C:\new)", R"('C:\\new')"},
      {"\n\r\t\x1b[2J\x7f\0"s, R"('\n\r\t\x1b[2J\x7f\x00')"},
      {"\u0080\u0085\u009f\u00a0 \u2027\u2028\u2029\u202a",
       "'\\u0080\\u0085\\u009f\u00a0 \u2027\\u2028\\u2029\u202a'"},
      {"\xff\xc3(\xed\xa0\x80\xe2\x80", R"('\xff\xc3(\xed\xa0\x80\xe2\x80')"},
  };
  for (const auto& [bytes, literal] : kRows) EXPECT_EQ(quoted_literal(bytes), literal);
  EXPECT_EQ(printable("a\\'\"\nb\x85"), R"(a\'"\nb\x85)");
}

TEST(QuotedLiteral, IsOneWellFormedLineForAnyBytes) {
  constexpr std::string_view kBytes = "'\"\\\n\r\xc2\x85\xe2\x80\xa8\xa9\xf0\x1b";
  std::mt19937 random(1);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes;
    while (random() % 12 != 0) bytes += kBytes[random() % kBytes.size()];
    const std::string literal = quoted_literal(bytes);
    ASSERT_EQ(values::scan_utf8(literal).well_formed, literal.size()) << printable(bytes);
    for (const std::string_view forbidden : {"\n", "\r", "\x1b", "\u0085", "\u2028", "\u2029"}) {
      ASSERT_EQ(literal.find(forbidden), std::string::npos) << literal;
    }
    // Only the last byte is an unescaped quote.
    std::size_t end = 1;
    while (literal.at(end) != literal[0]) end += literal[end] == '\\' ? 2U : 1U;
    ASSERT_EQ(end + 1, literal.size()) << literal;
  }
}

}  // namespace
}  // namespace vantrex::logging

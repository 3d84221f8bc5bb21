#include "vantrex/logging/logger.h"

#include <exception>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "support/allocations.h"

namespace vantrex::logging {
namespace {

constexpr Logger kLogger("vantrex.test");

class LoggerTest : public testing::Test {
 protected:
  ~LoggerTest() override { set_sink({}); }
};

struct Untold {};

// An error with three causes, two of which have no text.
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
  const std::exception_ptr untold = led_to(std::make_exception_ptr(7), Untold());
  return led_to(led_to(untold, std::runtime_error("disk\ngone")), std::logic_error("index unreadable"));
}

TEST_F(LoggerTest, DefaultSinkWritesTheErrorAndItsCauses) {
  set_sink([](const Record&) { FAIL() << "the sink was taken away"; });
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

TEST_F(LoggerTest, FailingSinksHarmNobody) {
  set_sink([](const Record& record) {
    EXPECT_EQ(record.message, "near \"it's %r\" 100%");
    throw 1;
  });
  kLogger.warning("near %r 100%", "it's %r", nullptr);
  set_sink([](const Record& /*record*/) {
    set_sink({});
    throw std::runtime_error("the sink that replaced itself");
  });
  kLogger.warning("lost", nullptr);
}

TEST_F(LoggerTest, WithoutMemoryTheFormatIsSent) {
  const std::string wanted(100, 'w');
  const std::string expected = "near '" + wanted + "'";
  std::size_t formats = 0;
  bool quoted = false;
  set_sink([&](const Record& record) {
    quoted = record.message == expected;
    if (record.message == "near %r") ++formats;
  });
  tests::fail_each_allocation(
      [&] {
        kLogger.warning("near %r", wanted, nullptr);
        if (!quoted) throw std::bad_alloc();
      },
      [] {});
  EXPECT_TRUE(quoted);
  EXPECT_GT(formats, 0U);
}

}  // namespace
}  // namespace vantrex::logging

#include "vantrex/logging/logger.h"

#include <atomic>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

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
  kLogger.warning("no error", nullptr);
  kLogger.warning("Looking near %r failed", "a\nb", nested_error());
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "WARNING vantrex.test: no error\n"
            "WARNING vantrex.test: Looking near 'a\\nb' failed\n"
            "  error: index unreadable\n"
            "  caused by: disk\\ngone\n"
            "  caused by: an error without a text\n"
            "  caused by: an error without a text\n");
}

TEST_F(LoggerTest, SinkGetsTheRecordAndTheVeryError) {
  const std::exception_ptr error = nested_error();
  int records = 0;
  set_sink([&](const Record& record) {
    ++records;
    EXPECT_EQ(record.logger, "vantrex.test");
    EXPECT_EQ(level_name(record.level), "WARNING");
    EXPECT_EQ(record.message, "near \"it's %r\" 100%");
    EXPECT_EQ(record.error, error);
  });
  kLogger.warning("near %r 100%", "it's %r", error);
  EXPECT_EQ(records, 1);
}

TEST_F(LoggerTest, FailingSinksHarmNobody) {
  set_sink([](const Record&) { throw 1; });
  kLogger.warning("lost", nullptr);
  set_sink([](const Record&) {
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

TEST_F(LoggerTest, SinkMayBeReplacedWhileOthersLog) {
  std::atomic<std::size_t> seen = 0;
  const auto counting = [&seen](const Record&) { ++seen; };
  set_sink(counting);
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 3; ++thread) {
    threads.emplace_back([] {
      for (int count = 0; count < 2000; ++count) kLogger.warning("near %r", "x", nullptr);
    });
  }
  for (int count = 0; count < 2000; ++count) set_sink(counting);
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(seen, 6000U);
}

}  // namespace
}  // namespace vantrex::logging

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/indexes.h"
#include "vantrex/logging/logger.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/tool_result.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::JsonObject;

constexpr int kRounds = 300;

TEST(Threads, FinishOneAnswerWhileLookupsFailAndTheLogChanges) {
  const fuzz::Request request = fuzz::Random(1).request();
  const JsonObject answer = without_null_fields(request.answer);  // its long texts are shared by copies
  const auto finish = [&] {
    JsonObject copy = answer;
    copy.set("more", 1);
    copy.set(copy.begin()->key, 2);
    return tool_result_text(finish_answer(answer, request.tool, request.options()));
  };
  const tests::FailingIndex index([] { throw 7; });
  const auto miss = [&] {
    JsonObject none;
    return tool_result_text(suggest_paths(none, index, "main.py", "imports"));
  };

  std::atomic<int> logged = 0;
  const auto counting = [&logged](const logging::Record& /*record*/) { ++logged; };
  logging::set_sink(counting);
  const std::string finished = finish();
  const std::string missed = miss();
  std::vector<std::thread> threads;
  for (int each = 0; each < 3; ++each) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) EXPECT_EQ(finish() + miss(), finished + missed);
    });
  }
  for (int round = 0; round < kRounds; ++round) logging::set_sink(counting);
  for (std::thread& thread : threads) thread.join();
  logging::set_sink({});
  EXPECT_EQ(logged, 1 + 3 * kRounds);
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

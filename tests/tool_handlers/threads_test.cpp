#include <atomic>
#include <functional>
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

// Copies, changes and finishes an answer that other threads use too.
void finish_shared(const fuzz::Request& request, const JsonObject& answer, const std::string& expected) {
  for (int round = 0; round < kRounds; ++round) {
    JsonObject copy = answer;
    copy.set("round", round);
    copy.set(copy.begin()->key, round);
    EXPECT_EQ(tool_result_text(finish_answer(answer, request.tool, request.options())), expected);
  }
}

void miss(const models::Repository& index, const std::string& expected) {
  for (int round = 0; round < kRounds; ++round) {
    JsonObject answer;
    EXPECT_EQ(tool_result_text(suggest_paths(answer, index, "main.py", "imports")), expected);
  }
}

TEST(Threads, FinishOneAnswerWhileLookupsFailAndTheLogChanges) {
  const fuzz::Request request = fuzz::Random(1).request();
  const JsonObject answer = without_null_fields(request.answer);  // shared by its copies
  const std::string expected = tool_result_text(finish_answer(answer, request.tool, request.options()));
  const tests::FailingIndex index([] { throw 7; });
  JsonObject none;
  const std::string missed =
      tool_result_text(suggest_paths(none, models::InMemoryRepository(), "main.py", "imports"));

  std::atomic<int> logged = 0;
  const auto counting = [&logged](const logging::Record& /*record*/) { ++logged; };
  logging::set_sink(counting);
  std::vector<std::thread> threads;
  for (int each = 0; each < 3; ++each) {
    threads.emplace_back(finish_shared, std::cref(request), std::cref(answer), std::cref(expected));
    threads.emplace_back(miss, std::cref(index), std::cref(missed));
  }
  for (int round = 0; round < kRounds; ++round) logging::set_sink(counting);
  for (std::thread& thread : threads) thread.join();
  logging::set_sink({});
  EXPECT_EQ(logged, 3 * kRounds);
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

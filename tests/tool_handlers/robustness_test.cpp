// Answers and lookups when memory runs out, and on several threads at once.
#include <atomic>
#include <functional>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/allocations.h"
#include "support/indexes.h"
#include "vantrex/logging/logger.h"
#include "vantrex/models/name_index.h"
#include "vantrex/tool_handlers/freshness.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::JsonObject;

// Fails each allocation of `call` in turn. Nothing leaks, and the next call gives the same text. With
// `recovers`, a call that lacks memory may also go on and give another text.
void check(const char* name, const std::function<std::string()>& call, bool recovers = false) {
  SCOPED_TRACE(name);
  const std::string expected = call();
  const auto again = [&] {
    const std::string given = call();
    if (given != expected && recovers) throw std::bad_alloc();
    ASSERT_EQ(given, expected);
  };
  for (const bool once : {false, true}) tests::fail_each_allocation(again, again, once);
}

TEST(Memory, MayRunOutWhileAnAnswerIsFinished) {
  for (std::uint64_t seed = 0; seed < 30; ++seed) {
    const fuzz::Request request = fuzz::Random(seed).request();
    const auto text_of = [&request](auto operation) {
      return [&request, operation] {
        const JsonObject given = operation(request.answer, request.tool, request.options());
        return tool_result_text(given) + tool_result_text(request.answer);
      };
    };
    check("finish", text_of([](auto&&... given) { return finish_answer(given...); }));
    check("explain", text_of([](auto&&... given) { return explain_answer(given...).to_dict(); }));
    check("canonical text", [&request] { return values::canonical_text(request.answer); });
  }
}

TEST(Memory, MayRunOutInALookup) {
  logging::set_sink([](const logging::Record& /*record*/) {});
  const models::InMemoryRepository index = tests::small_index();
  const models::InMemoryRepository none;
  const auto miss = [](auto suggest, const models::Repository& asked, const char* wanted) {
    JsonObject answer;
    return tool_result_text(suggest(answer, asked, wanted, "imports", nullptr));
  };
  check(
      "symbol", [&] { return miss(suggest_symbols, index, "a.wanted.name.that.is.run"); }, true);
  check(
      "path", [&] { return miss(suggest_paths, index, "a/wanted/path/to/main.py"); }, true);
  check("miss", [&] { return miss(suggest_symbols, none, "a.long::b"); });
  check("freshness", [&] {
    JsonObject answer;
    add_freshness(answer, freshness_block(index));
    return tool_result_text(answer);
  });
  check("lookup", [&] { return workers::nearest_symbols(index, "pkg.rnu").at(0).fqn; });
  check("name index", [&] {
    models::InMemoryRepository indexed = index;
    indexed.make_name_index();
    const models::SymbolView named = indexed.name_index()->symbols_named("Run").at(0);
    return workers::nearest_symbols(indexed, "pkg.rnu").at(0).fqn.append(named.file);
  });
  check("name", [] { return workers::guessed_name("a.a_name_of_more_than_14_bytes"); });
  logging::set_sink({});
}

TEST(Threads, FinishOneAnswerWhileLookupsFailAndTheSinkChanges) {
  constexpr int kRounds = 300;
  const fuzz::Request request = fuzz::Random(1).request();
  const JsonObject answer = without_null_fields(request.answer);  // copies share its long texts
  const tests::FailingIndex index([] { throw 7; });
  models::InMemoryRepository indexed = tests::small_index();
  indexed.make_name_index();
  const auto texts = [&] {
    JsonObject copy = answer;
    copy.set("more", 1);
    copy.set(copy.begin()->key, 2);
    JsonObject none;
    return tool_result_text(finish_answer(answer, request.tool, request.options())) +
           tool_result_text(suggest_paths(none, index, "main.py", "imports")) +
           tool_result_text(suggest_symbols(none, indexed, "pkg.rnu", "detail"));
  };

  std::atomic<int> logged = 0;
  const auto counting = [&logged](const logging::Record& /*record*/) { ++logged; };
  logging::set_sink(counting);
  const std::string expected = texts();
  std::vector<std::thread> threads;
  for (int each = 0; each < 3; ++each) {
    threads.emplace_back([&] {
      for (int round = 0; round < kRounds; ++round) EXPECT_EQ(texts(), expected);
    });
  }
  for (int round = 0; round < kRounds; ++round) logging::set_sink(counting);
  for (std::thread& thread : threads) thread.join();
  logging::set_sink({});
  EXPECT_EQ(logged, 1 + 3 * kRounds);
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

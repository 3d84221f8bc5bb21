#include "vantrex/tool_handlers/next_steps/suggestions.h"

#include <new>
#include <pthread.h>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/indexes.h"
#include "support/table.h"
#include "vantrex/logging/logger.h"
#include "vantrex/tool_handlers/freshness.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using models::InMemoryRepository;
using tests::small_index;
using values::compact_text;
using values::JsonObject;

// The answer `before` with what is suggested for a wanted symbol or path.
std::string suggested(const std::string& what, const models::Repository& index, const std::string& wanted,
                      const std::string& action = "detail", const std::string& before = "{}") {
  JsonObject answer = tests::parse_object(before);
  const auto& suggest = what == "symbol" ? suggest_symbols : suggest_paths;
  EXPECT_EQ(&suggest(answer, index, wanted, action), &answer);
  // The step is the tool's own, and stays the only one.
  const JsonObject finished = finish_answer(answer, "symbol", {.action = "callers"});
  EXPECT_EQ(finished["next_steps"], answer["next_steps"]);
  return compact_text(answer);
}

TEST(Suggestions, MarkTheAnswerAndUseTheBestCandidate) {
  for (const auto& row : tests::table(R"(
# what | wanted | action | the answer before | and after
symbol | pkg.x.Run | callers | {"z":1} | {"z":1,"found":false,"did_you_mean":[{"fqn":"pkg.a.Run","name":"Run","kind":"function","file":"pkg/a.py","line":3},{"fqn":"pkg.b.run","name":"run"}],"next_steps":[{"tool":"symbol","args":{"action":"callers","fqn":"pkg.a.Run"},"reason":"The nearest indexed symbol to pkg.x.Run is pkg.a.Run"}]}
symbol | pkg.mod.Thng | callers | {} | {"found":false,"did_you_mean":[],"next_steps":[{"tool":"search","args":{"action":"symbols","query":"Thng"},"reason":"No indexed symbol is near pkg.mod.Thng: search the names"}]}
symbol | ... | detail | {"next_steps":[1,2],"a":null,"did_you_mean":{"b":1},"found":true,"c":2} | {"next_steps":[{"tool":"search","args":{"action":"symbols","query":"..."},"reason":"No indexed symbol is near ...: search the names"}],"a":null,"did_you_mean":[],"found":false,"c":2}
path | src/app/man.py | imports | {"did_you_mean":1} | {"did_you_mean":["src/app/main.py","lib/main.py"],"found":false,"next_steps":[{"tool":"file","args":{"action":"imports","path":"src/app/main.py"},"reason":"The nearest indexed file to src/app/man.py is src/app/main.py"}]}
path | docs/x.md | imports | {"next_steps":[{"tool":"own"}]} | {"next_steps":[{"tool":"files","args":{},"reason":"No indexed file is near docs/x.md"}],"found":false,"did_you_mean":[]}
)")) {
    EXPECT_EQ(suggested(row.at(0), small_index(), row.at(1), row.at(2), row.at(3)), row.at(4));
  }
}

TEST(Suggestions, AnswerForAnyBytes) {
  EXPECT_EQ(
      suggested("symbol", small_index(), "x.caf\xe9", "\xff"),
      R"({"found":false,"did_you_mean":[{"fqn":"pkg.caf�","name":"caf�"}],"next_steps":[{"tool":"symbol",)"
      R"("args":{"action":"�","fqn":"pkg.caf�"},"reason":"The nearest indexed symbol to x.caf� is pkg.caf�"}]})");
  EXPECT_EQ(
      suggested("path", small_index(), "\xff.bin"),
      R"({"found":false,"did_you_mean":["data/�.bin"],"next_steps":[{"tool":"file","args":{"action":"detail",)"
      R"("path":"data/�.bin"},"reason":"The nearest indexed file to �.bin is data/�.bin"}]})");
  EXPECT_EQ(suggested("symbol", small_index(), "none\xc3"), suggested("symbol", small_index(), "none�"));
}

std::string text_of(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& exception) {
    return exception.what();
  } catch (int number) {
    return std::to_string(number);
  }
}

TEST(Suggestions, TakeALookupThatFailsAsOneThatFindsNothing) {
  const std::pair<std::function<void()>, std::string> kFailures[] = {
      {[] { throw std::runtime_error("gone"); }, "gone"},
      {[] { throw std::bad_alloc(); }, std::bad_alloc().what()},
      {[] { throw 7; }, "7"}};
  for (const auto& [fail, error] : kFailures) {
    for (const std::size_t shown : {0U, 1U, 3U}) {
      const tests::FailingIndex index(fail, shown);
      for (const std::string what : {"symbol", "path"}) {
        std::vector<std::string> logged;
        logging::set_sink([&, log_fails = shown == 1](const logging::Record& record) {
          logged.push_back(std::string(level_name(record.level)) + " " + std::string(record.logger) + ": " +
                           std::string(record.message) + ": " + text_of(record.error));
          if (log_fails) throw 8;
        });
        EXPECT_EQ(suggested(what, index, "src/main's.py"),
                  suggested(what, InMemoryRepository(), "src/main's.py"));
        EXPECT_EQ(logged, std::vector{"WARNING vantrex.tool_handlers.next_steps: Looking for " +
                                      std::string(what == "symbol" ? "symbols" : "files") +
                                      " near \"src/main's.py\" failed: " + error});
        logging::set_sink({});
      }
      // Nobody but these two lookups catches anything.
      EXPECT_ANY_THROW(freshness_block(index));
    }
  }
}

TEST(Suggestions, LetTheCancellationOfTheirThreadPass) {
  const auto cancel_here = [] {
    pthread_cancel(pthread_self());
    pthread_testcancel();
  };
  const std::function<void()> failures[] = {cancel_here, [] { throw 7; }};
  logging::set_sink([&](const logging::Record& /*record*/) { cancel_here(); });
  for (const auto& fail : failures) {  // in the lookup, and in the log of its failure
    pthread_t thread{};
    const auto suggest = [](void* index) -> void* {
      suggested("symbol", *static_cast<const models::Repository*>(index), "wanted");
      return nullptr;
    };
    tests::FailingIndex index(fail, 0);
    ASSERT_EQ(pthread_create(&thread, nullptr, suggest, static_cast<models::Repository*>(&index)), 0);
    void* ending = nullptr;
    pthread_join(thread, &ending);
    EXPECT_EQ(ending, PTHREAD_CANCELED);
  }
  logging::set_sink({});
}

TEST(Freshness, NamesBothRevisionsUnlessTheIndexIsCurrent) {
  EXPECT_EQ(compact_text(freshness_block(small_index())),
            R"({"current":false,"indexed_revision":"r1","present_revision":"r2"})");
  EXPECT_EQ(freshness_block(InMemoryRepository("r1", "r1")), nullptr);
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

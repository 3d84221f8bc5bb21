#include "vantrex/tool_handlers/next_steps/suggestions.h"

#include <functional>
#include <new>
#include <pthread.h>
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

// The text of the answer `before` after a suggestion for a missed symbol or path.
std::string suggested(const std::string& what, const models::Repository& index, const std::string& wanted,
                      const std::string& action = "detail", const std::string& before = "{}") {
  JsonObject answer = tests::parse_object(before);
  const auto& suggest = what == "symbol" ? suggest_symbols : suggest_paths;
  EXPECT_EQ(&suggest(answer, index, wanted, action, nullptr), &answer);
  const JsonObject finished = finish_answer(answer, "symbol", {.action = "callers"});
  EXPECT_EQ(finished["next_steps"], answer["next_steps"]) << "the step of a miss stays the only one";
  return compact_text(answer);
}

TEST(Suggestions, MarkTheAnswerAndUseTheBestCandidate) {
  for (const auto& row : tests::table(R"(
# what | wanted | action | the answer before | and after
symbol | pkg.x.Run | callers | {"z":1} | {"z":1,"found":false,"did_you_mean":[{"fqn":"pkg.a.Run","name":"Run","kind":"function","file":"pkg/a.py","line":1},{"fqn":"pkg.b.run","name":"run"}],"next_steps":[{"tool":"symbol","args":{"action":"callers","fqn":"pkg.a.Run"},"reason":"The nearest indexed symbol to pkg.x.Run is pkg.a.Run"}]}
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
  EXPECT_NE(suggested("path", small_index(), "\xff.bin").find(R"("path":"data/�.bin"},"reason":)"),
            std::string::npos);
  EXPECT_EQ(suggested("symbol", small_index(), "none\xc3"), suggested("symbol", small_index(), "none�"));
}

TEST(Suggestions, TakeALookupThatFailsAsOneThatFindsNothing) {
  const std::function<void()> failures[] = {[] { throw std::bad_alloc(); }, [] { throw 7; }};
  for (const auto& fail : failures) {
    for (const std::size_t shown : {0U, 1U, 3U}) {
      const tests::FailingIndex index(fail, shown);
      std::vector<std::string> logged;
      logging::set_sink([&, log_fails = shown == 1](const logging::Record& record) {
        logged.push_back(std::string(record.logger) + ": " + std::string(record.message));
        EXPECT_NE(record.error, nullptr);
        if (log_fails) throw 8;
      });
      const std::string nothing_near = suggested("symbol", InMemoryRepository(), "src/main's.py");
      EXPECT_EQ(suggested("symbol", index, "src/main's.py"), nothing_near);
      EXPECT_EQ(suggested("path", index, "x"), suggested("path", InMemoryRepository(), "x"));
      logging::set_sink({});
      const std::string looking = "vantrex.tool_handlers.next_steps: Looking for ";
      EXPECT_EQ(logged, (std::vector{looking + "symbols near \"src/main's.py\" failed",
                                     looking + "files near 'x' failed"}));
      EXPECT_ANY_THROW(freshness_block(index)) << "only the lookups are guarded";
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
  for (const auto& fail : failures) {  // in the lookup, then in the log of its failure
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

#include "vantrex/tool_handlers/next_steps/suggestions.h"

#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/table.h"
#include "vantrex/logging/logger.h"
#include "vantrex/models/repository.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using models::InMemoryRepository;
using values::compact_text;
using values::JsonObject;

using Suggest = JsonObject& (*)(JsonObject&, const models::Repository&, std::string_view, std::string_view);

const std::vector<std::pair<std::string, Suggest>> kSuggest = {{"symbol", suggest_symbols},
                                                               {"path", suggest_paths}};
Suggest suggest_for(const std::string& name) {
  return name == "symbol" ? suggest_symbols : suggest_paths;
}

InMemoryRepository small_index() {
  InMemoryRepository index;
  index.add_symbol({.fqn = "pkg.b.run", .name = "run"});
  index.add_symbol({.fqn = "pkg.a.Run", .name = "Run", .kind = "function", .file = "pkg/a.py", .line = 3});
  index.add_symbol({.fqn = "pkg.caf\xe9", .name = "caf\xe9"});
  for (const char* path : {"lib/main.py", "src/app/main.py", "data/\xff.bin"}) index.add_path(path);
  return index;
}

// Collects what is logged while it lives.
class LogKeeper {
 public:
  LogKeeper() {
    logging::set_sink([this](const logging::Record& record) {
      messages.push_back(std::string(level_name(record.level)) + " " + std::string(record.logger) + ": " +
                         std::string(record.message));
      errors.push_back(record.error);
    });
  }
  LogKeeper(const LogKeeper&) = delete;
  LogKeeper& operator=(const LogKeeper&) = delete;
  ~LogKeeper() { logging::set_sink({}); }

  std::vector<std::string> messages;
  std::vector<std::exception_ptr> errors;
};

TEST(Suggestions, MarkTheAnswerAndUseTheBestCandidate) {
  const InMemoryRepository index = small_index();
  const auto rows = tests::table(R"(
# what | wanted | action | the answer before | and after
symbol | pkg.x.Run | callers | {"z":1} | {"z":1,"found":false,"did_you_mean":[{"fqn":"pkg.a.Run","name":"Run","kind":"function","file":"pkg/a.py","line":3},{"fqn":"pkg.b.run","name":"run"}],"next_steps":[{"tool":"symbol","args":{"action":"callers","fqn":"pkg.a.Run"},"reason":"The nearest indexed symbol to pkg.x.Run is pkg.a.Run"}]}
symbol | pkg.mod.Thng | callers | {} | {"found":false,"did_you_mean":[],"next_steps":[{"tool":"search","args":{"action":"symbols","query":"Thng"},"reason":"No indexed symbol is near pkg.mod.Thng: search the names"}]}
symbol | ... | detail | {} | {"found":false,"did_you_mean":[],"next_steps":[{"tool":"search","args":{"action":"symbols","query":"..."},"reason":"No indexed symbol is near ...: search the names"}]}
symbol |  | detail | {} | {"found":false,"did_you_mean":[],"next_steps":[{"tool":"search","args":{"action":"symbols","query":""},"reason":"No indexed symbol is near : search the names"}]}
symbol | Thng | detail | {"next_steps":[1,2],"a":null,"did_you_mean":{"b":1},"found":true,"c":2} | {"next_steps":[{"tool":"search","args":{"action":"symbols","query":"Thng"},"reason":"No indexed symbol is near Thng: search the names"}],"a":null,"did_you_mean":[],"found":false,"c":2}
path | src/app/man.py | imports | {"did_you_mean":1} | {"did_you_mean":["src/app/main.py","lib/main.py"],"found":false,"next_steps":[{"tool":"file","args":{"action":"imports","path":"src/app/main.py"},"reason":"The nearest indexed file to src/app/man.py is src/app/main.py"}]}
path | docs/x.md | imports | {"found":true,"next_steps":[{"tool":"own"}]} | {"found":false,"next_steps":[{"tool":"files","args":{},"reason":"No indexed file is near docs/x.md"}],"did_you_mean":[]}
)");
  for (const auto& row : rows) {
    LogKeeper log;
    JsonObject answer = tests::parse_object(row.at(3));
    EXPECT_EQ(&suggest_for(row.at(0))(answer, index, row.at(1), row.at(2)), &answer);
    EXPECT_EQ(compact_text(answer), row.at(4)) << row.at(1);
    EXPECT_TRUE(log.messages.empty()) << row.at(1);
    // The step is the tool's own, and stays the only one.
    const JsonObject finished = finish_answer(answer, "symbol", {.action = "callers"});
    EXPECT_EQ(compact_text(finished["next_steps"]), compact_text(answer["next_steps"]));
  }
}

TEST(Suggestions, AnswerAWantedNameOfAnyBytes) {
  const std::string every = [] {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
    return bytes;
  }();
  const std::string cut = "caf\xc3";
  for (const auto& [what, suggest] : kSuggest) {
    for (const std::string& wanted : {every, cut, "x" + std::string(100000, '\xc3')}) {
      JsonObject answer;
      suggest(answer, InMemoryRepository(), wanted, "\xff");
      const auto reason = (*(*answer["next_steps"].list())[0].object())["reason"].string();
      const std::string before = what == "symbol" ? "No indexed symbol is near " : "No indexed file is near ";
      const values::Text shown = values::Text::lossy(wanted);
      EXPECT_EQ(*reason, before + std::string(shown.view()) + (what == "symbol" ? ": search the names" : ""));
    }
  }
  // Nor need what the index holds be well-formed, nor the action.
  JsonObject answer;
  suggest_symbols(answer, small_index(), "x.caf\xe9", "\xff");
  EXPECT_EQ(
      compact_text(answer),
      R"({"found":false,"did_you_mean":[{"fqn":"pkg.caf�","name":"caf�"}],"next_steps":[{"tool":"symbol",)"
      R"("args":{"action":"�","fqn":"pkg.caf�"},"reason":"The nearest indexed symbol to x.caf� is pkg.caf�"}]})");
  suggest_paths(answer, small_index(), "\xff.bin", "symbols");
  EXPECT_EQ(
      compact_text(answer),
      R"({"found":false,"did_you_mean":["data/�.bin"],"next_steps":[{"tool":"file",)"
      R"("args":{"action":"symbols","path":"data/�.bin"},"reason":"The nearest indexed file to �.bin is data/�.bin"}]})");
}

// An index that shows some of what it holds and then fails.
class FailingRepository final : public models::Repository {
 public:
  explicit FailingRepository(std::function<void()> fail) : fail_(std::move(fail)) {}
  void visit_symbols(const models::SymbolVisitor& visit) const override {
    small_index().visit_symbols(visit);
    fail_();
  }
  void visit_paths(const models::PathVisitor& visit) const override {
    small_index().visit_paths(visit);
    fail_();
  }
  std::string indexed_revision() const override { return ""; }
  std::string present_revision() const override { return ""; }

 private:
  std::function<void()> fail_;
};

TEST(Suggestions, TakeALookupThatFailsAsOneThatFindsNothing) {
  const std::function<void()> kFailures[] = {[] { throw std::runtime_error("gone"); },
                                             [] { throw std::bad_alloc(); }, [] { throw 7; }};
  const std::string logger = "WARNING vantrex.tool_handlers.next_steps: ";
  for (const auto& [what, suggest] : kSuggest) {
    for (const auto& fail : kFailures) {
      for (const std::string wanted : {"src/app/mainn.py", "pkg.x.Run"}) {
        LogKeeper log;
        JsonObject failed{{"found", true}};
        EXPECT_EQ(&suggest(failed, FailingRepository(fail), wanted, "detail"), &failed);
        const std::string sought = what == "symbol" ? "symbols" : "files";
        ASSERT_EQ(log.messages,
                  std::vector{logger + "Looking for " + sought + " near '" + wanted + "' failed"});
        JsonObject none{{"found", true}};
        suggest(none, InMemoryRepository(), wanted, "detail");
        EXPECT_EQ(compact_text(failed), compact_text(none));
        // The very error is attached.
        try {
          std::rethrow_exception(log.errors.at(0));
        } catch (const std::runtime_error& error) {
          EXPECT_STREQ(error.what(), "gone");
        } catch (const std::bad_alloc&) {
        } catch (int number) {
          EXPECT_EQ(number, 7);
        }
      }
    }
  }
}

TEST(Suggestions, SurviveALogThatFails) {
  logging::set_sink([](const logging::Record&) { throw std::runtime_error("the log is full"); });
  JsonObject answer;
  suggest_paths(answer, FailingRepository([] { throw 7; }), "a'\n\"\xff", "symbols");
  logging::set_sink({});
  EXPECT_EQ(compact_text(answer),
            R"({"found":false,"did_you_mean":[],"next_steps":[{"tool":"files","args":{},)"
            R"("reason":"No indexed file is near a'\n\"�"}]})");
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

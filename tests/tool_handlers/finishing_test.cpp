#include "vantrex/tool_handlers/next_steps/finishing.h"

#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/table.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse;
using tests::parse_object;
using values::compact_text;
using values::JsonObject;
using values::JsonValue;

TEST(WithoutNullFields, DropsFieldsAndKeepsItems) {
  for (const auto& row : tests::table(R"(
{"a":[1,null,{"c":null}],"y":null,"b":{"c":null},"a0":0} | {"a":[1,null,{}],"b":{},"a0":0}
[null,[null],{"a":null}] | [null,[null],{}]
null | null
)")) {
    const JsonValue value = parse(row.at(0));
    EXPECT_EQ(compact_text(without_null_fields(value)), row.at(1)) << row.at(0);
    if (value.object() == nullptr) continue;
    EXPECT_EQ(compact_text(without_null_fields(*value.object())), row.at(1));
  }
}

// Replaces the words that stand for a step or for a long text.
std::string expanded(std::string cell) {
  const std::pair<std::string, std::string> kWords[] = {
      {"REFERENCES",
       R"({"tool":"symbol","args":{"action":"references","fqn":"f"},"reason":"Every use of it"})"},
      {"OWN", R"({"tool":"t","args":{"a":1},"reason":"r"})"},
      {"LONG", std::string(250, 'n')}};
  for (const auto& [word, text] : kWords) cell = tests::replaced(std::move(cell), word, text);
  return cell;
}

// The finished answer of a row that begins with tool, action, arguments and answer; "-" for none.
JsonObject finished(const std::vector<std::string>& row, JsonValue freshness = nullptr) {
  const bool has_arguments = row.at(2) != "-";
  const JsonObject arguments = parse_object(has_arguments ? row.at(2) : "{}");
  return finish_answer(parse_object(expanded(row.at(3))), row.at(0),
                       {.action = row.at(1) == "-" ? OptionalText() : row.at(1),
                        .arguments = has_arguments ? &arguments : nullptr,
                        .freshness = std::move(freshness)});
}

TEST(FinishAnswer, GivesTheFinishedText) {
  for (const auto& row : tests::table(R"(
# tool | action | arguments | answer | finished answer | freshness block
symbol | callers | {"fqn":"pkg.mod.parse"} | {"fqn":"pkg.mod.parse","callers":[{},{},{},{},{},{},{},{},{},{},{},{}],"total_count":12,"note":null} | {"fqn":"pkg.mod.parse","callers":[{},{},{},{},{},{},{},{},{},{},{},{}],"total_count":12,"next_steps":[{"tool":"quality","args":{"action":"impact","fqn":"pkg.mod.parse"},"reason":"12 callers: check the blast radius"},{"tool":"symbol","args":{"action":"references","fqn":"pkg.mod.parse"},"reason":"Every use of it"}]} | null
# An empty list, no list or null counts as no own steps.
symbol | callers | - | {"next_steps":[],"fqn":"f"} | {"fqn":"f","next_steps":[REFERENCES]} | null
symbol | callers | - | {"next_steps":{"tool":"t"},"fqn":"f"} | {"fqn":"f","next_steps":[REFERENCES]} | null
other | callers | {} | {"next_steps":null,"a":1} | {"a":1} | null
# Own steps: no signal, no cap, repeats stay; only their null fields go.
search | symbols | {"query":"q"} | {"next_steps":[OWN,OWN,OWN,OWN,OWN],"total_count":0} | {"total_count":0,"next_steps":[OWN,OWN,OWN,OWN,OWN]} | null
status | - | - | {"next_steps":[{"tool":"t","args":{"a":null},"reason":null},null,3],"a":[null]} | {"a":[null],"next_steps":[{"tool":"t","args":{}},null,3]} | null
# Over the room the first step and every signal stay; a usual step after a signal goes.
status | - | - | {"next_steps":["LONGLONG","b"],"a":1} | {"a":1,"next_steps":["LONGLONG"]} | null
symbol | callers | - | {"fqn":"LONG","total":8} | {"fqn":"LONG","total":8,"next_steps":[{"tool":"quality","args":{"action":"impact","fqn":"LONG"},"reason":"8 callers: check the blast radius"}]} | null
# The freshness block is added unchanged, before the steps. Hints in it count.
symbol | callers | - | {"fqn":"f"} | {"fqn":"f","freshness":{"current":false,"page":null},"next_steps":[REFERENCES]} | {"current":false,"page":null}
other | - | - | {"freshness":0,"a":1} | {"freshness":{},"a":1} | {}
symbol | - | - | {"fqn":"f"} | {"fqn":"f","freshness":{"note":"LONG"},"next_steps":[REFERENCES]} | {"note":"LONG"}
)")) {
    EXPECT_EQ(tool_result_text(finished(row, parse(expanded(row.at(5))))), expanded(row.at(4))) << row.at(3);
  }
}

// Worked by hand; another test compares random requests with a naive implementation.
TEST(FinishAnswer, TakesTheCallsFromTheAnswer) {
  for (const auto& row : tests::table(R"(
# tool | action | arguments | answer | tool and arguments of each step
search | definition | {"query":""} | {"total":false,"query":"q"} | search{"action":"semantic","query":"q"}
search | semantic | {"query":"q"} | {"results":[]} | explore{"query":"q"}
symbol | callers | {"fqn":"f"} | {"total":18446744073709551615,"fqn":""} | quality{"action":"impact","fqn":"f"} symbol{"action":"references","fqn":""}
tests | for_file | {"path":"p"} | {"tests":[]} | tests{"action":"recommended","changed_files":["p"]}
search | symbols | {} | {"symbols":[{"fqn":"h","kind":"HEADING"},{"fqn":"d","file":"a.md"}],"callers":[{"fqn":"c"}]} | symbol{"action":"detail","fqn":"c"} symbol{"action":"callers","fqn":"c"}
search | code | {} | {"path":"own","tests":["text"],"files":[3,"p"]} | file{"action":"symbols","path":"p"}
architecture | components | {} | {"components":[{"name":"c"}]} | architecture{"action":"dependencies","component":"c"}
context | - | {} | {"file":"A","affected_files":[{"path":"B"},"C",{"path":"A"}],"files":["D"]} | tests{"action":"recommended","changed_files":["A","B","C"]}
context | - | {} | {"files":["0","1","2","3","4","5","6","7","8","9","0"],"base_branch":"b"} | tests{"action":"recommended","changed_files":["0","1","2","3","4","5","6","7","8","9"]}
context | - | {} | {"files":["0","1","2","3","4","5","6","7","8","9","X"],"base_branch":"b"} | tests{"action":"recommended","base_branch":"b"}
git | log | {"path":""} | {"base_branch":7} | tests{"action":"recommended","changed_files":[""]} context{"action":"delta"}
)")) {
    EXPECT_EQ(tests::calls_of(finished(row)), row.at(4)) << row.at(0) << ":" << row.at(1) << " " << row.at(3);
  }
}

// The addresses of the items of every list and object in `value`.
std::vector<const void*> addresses(const JsonValue& value) {
  std::vector<const void*> all;
  const auto add = [&all](const JsonValue& item) {
    const auto inner = addresses(item);
    all.insert(all.end(), inner.begin(), inner.end());
  };
  if (const auto* list = value.list()) {
    all.push_back(list->begin());
    for (const JsonValue& item : *list) add(item);
  } else if (const auto* object = value.object()) {
    all.push_back(object->begin());
    for (const auto& field : *object) add(field.value);
  }
  return all;
}

TEST(Signal, TakesWhatIsKnown) {
  for (const auto& row : tests::table(R"(
{"hits":8,"query":null,"fqn":"f","path":null,"what":"callers"} | {"tool":"quality","args":{"action":"impact","fqn":"f"},"reason":"8 callers: check the blast radius"}
{"hits":7,"query":null,"fqn":"f","path":null,"what":"callers"} | null
{"hits":null,"query":null,"fqn":"f","path":null,"what":"callers"} | null
{"hits":8,"query":"q","fqn":"","path":"p","what":"callers"} | null
)")) {
    EXPECT_EQ(JsonValue(_blast_radius(tests::parse_object(row.at(0)))), tests::parse(row.at(1))) << row.at(0);
  }
}

TEST(FinishAnswer, CopiesNothingOfAnAnswerThatIsMoved) {
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    JsonObject answer{{"fqn", "f"}, {"inner", fuzz::Random(seed).request().answer}};
    const auto before = addresses(answer["inner"]);
    const JsonObject given = finish_answer(std::move(answer), "symbol");
    EXPECT_TRUE(answer.empty());  // NOLINT(bugprone-use-after-move): it is consumed
    ASSERT_NE(given["next_steps"].list(), nullptr);
    EXPECT_EQ(addresses(given["inner"]), before);
  }
}

TEST(FinishAnswer, TakesAnyFormOfAnAbsentAction) {
  const char* none = nullptr;
  for (const OptionalText& action :
       {OptionalText(none), OptionalText(std::nullopt), OptionalText(std::optional<std::string>()),
        OptionalText(std::optional<std::string_view>())}) {
    const JsonObject given = finish_answer({{"fqn", "f"}}, "symbol", {.action = action});
    EXPECT_EQ(given["next_steps"].list()->size(), 2U);
  }
  char unterminated[] = {'a', 'b', 'c'};
  const OptionalText bounded = unterminated;
  EXPECT_EQ(std::optional<std::string_view>(bounded), "abc");
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

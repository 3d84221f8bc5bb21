#include <optional>
#include <regex>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "support/table.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse;
using tests::parse_object;
using values::JsonList;
using values::JsonObject;

TEST(WithoutNullFields, DropsFieldsAndKeepsItems) {
  const JsonObject object = parse_object(R"({"a":[1,null,{"c":null}],"y":null,"b":{"c":null},"a0":0})");
  EXPECT_EQ(values::compact_text(without_null_fields(object)), R"({"a":[1,null,{}],"b":{},"a0":0})");
  EXPECT_EQ(values::compact_text(without_null_fields(parse(R"([null,{"a":null}])"))), "[null,{}]");
  EXPECT_EQ(without_null_fields(nullptr), nullptr);
}

// What stands for a step in the table, and for a long text.
std::string expanded(std::string cell) {
  const std::pair<std::string, std::string> kWords[] = {
      {"REFERENCES",
       R"({"tool":"symbol","args":{"action":"references","fqn":"f"},"reason":"Every use of it"})"},
      {"CALLERS",
       R"({"tool":"symbol","args":{"action":"callers","fqn":"f"},"reason":"Who calls the best hit"})"},
      {"COMPONENTS",
       R"({"tool":"architecture","args":{"action":"components"},"reason":"The components of the code"})"},
      {"OWN", R"({"tool":"t","args":{"a":1},"reason":"r"})"},
      {"LONG", std::string(250, 'n')}};
  for (const auto& [word, text] : kWords) cell = std::regex_replace(cell, std::regex(word), text);
  return cell;
}

TEST(FinishAnswer, GivesTheFinishedText) {
  for (const auto& row : tests::table(R"(
# tool | action, - for none | arguments, - for none | freshness | answer | finished answer
symbol | callers | {"fqn":"pkg.mod.parse"} | null | {"fqn":"pkg.mod.parse","callers":[{},{},{},{},{},{},{},{},{},{},{},{}],"total_count":12,"note":null} | {"fqn":"pkg.mod.parse","callers":[{},{},{},{},{},{},{},{},{},{},{},{}],"total_count":12,"next_steps":[{"tool":"quality","args":{"action":"impact","fqn":"pkg.mod.parse"},"reason":"12 callers: check the blast radius"},{"tool":"symbol","args":{"action":"references","fqn":"pkg.mod.parse"},"reason":"Every use of it"}]}
# A list that says nothing, no list, or null: as if the tool gave no steps.
symbol | callers | - | null | {"next_steps":[],"fqn":"f"} | {"fqn":"f","next_steps":[REFERENCES]}
symbol | callers | - | null | {"next_steps":{"tool":"t"},"fqn":"f"} | {"fqn":"f","next_steps":[REFERENCES]}
symbol | callers | - | null | {"next_steps":null,"fqn":"f"} | {"fqn":"f","next_steps":[REFERENCES]}
# Own steps: no signal, no cap, repeats stay; only their null fields go.
search | symbols | {"query":"q"} | null | {"next_steps":[OWN,OWN,OWN,OWN,OWN],"total_count":0} | {"total_count":0,"next_steps":[OWN,OWN,OWN,OWN,OWN]}
status | - | - | null | {"next_steps":[{"tool":"t","args":{"a":null},"reason":null},null,3],"a":[null]} | {"a":[null],"next_steps":[{"tool":"t","args":{}},null,3]}
# Over the room the first step stays, and a signal; a usual step beside it goes.
symbol | callers | - | null | {"fqn":"LONG","total":8} | {"fqn":"LONG","total":8,"next_steps":[{"tool":"quality","args":{"action":"impact","fqn":"LONG"},"reason":"8 callers: check the blast radius"}]}
# The freshness block is added as it is, before the steps; hints in it take their share of the room.
status | - | - | {"current":false,"page":null} | {"a":1} | {"a":1,"freshness":{"current":false,"page":null},"next_steps":[COMPONENTS]}
symbol | - | - | {"note":"LONG"} | {"fqn":"f"} | {"fqn":"f","freshness":{"note":"LONG"},"next_steps":[REFERENCES]}
)")) {
    const bool has_arguments = row.at(2) != "-";
    const JsonObject arguments = parse_object(has_arguments ? row.at(2) : "{}");
    const JsonObject finished = finish_answer(parse_object(expanded(row.at(4))), row.at(0),
                                              {.action = row.at(1) == "-" ? OptionalText() : row.at(1),
                                               .arguments = has_arguments ? &arguments : nullptr,
                                               .freshness = parse(expanded(row.at(3)))});
    EXPECT_EQ(tool_result_text(finished), expanded(row.at(5))) << row.at(4);
  }
}

TEST(FinishAnswer, CopiesNothingOfAnAnswerThatIsGivenUp) {
  JsonList inner;
  for (int each = 0; each < 1000; ++each) inner.push_back(JsonObject{{"a", JsonList::of(each)}});
  JsonObject answer{{"fqn", "f"}, {"inner", std::move(inner)}};
  const std::size_t before = tests::allocations().taken;
  const JsonObject finished = finish_answer(std::move(answer), "symbol");
  EXPECT_LT(tests::allocations().taken - before, 100U);
  EXPECT_TRUE(answer.empty());  // NOLINT(bugprone-use-after-move): it is consumed
  EXPECT_NE(finished["next_steps"].list(), nullptr);
}

TEST(FinishAnswer, TakesAnyFormOfAnAbsentAction) {
  const char* none = nullptr;
  for (const OptionalText& action :
       {OptionalText(), OptionalText(nullptr), OptionalText(none), OptionalText(std::nullopt),
        OptionalText(std::optional<std::string>()), OptionalText(std::optional<std::string_view>()),
        OptionalText(std::string_view("no action of the table"))}) {
    const JsonObject finished = finish_answer({{"fqn", "f"}}, "symbol", {.action = action});
    EXPECT_EQ(finished["next_steps"].list()->size(), 2U);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

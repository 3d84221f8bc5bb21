#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/table.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse;
using tests::parse_object;
using values::JsonObject;

TEST(WithoutNullFields, DropsFieldsAndKeepsItems) {
  for (const auto& row : tests::table(R"(
{"a":[1,null,{"c":null}],"y":null,"b":{"c":null},"a0":0} | {"a":[1,null,{}],"b":{},"a0":0}
[null,[null],{"a":null}] | [null,[null],{}]
{"a":null} | {}
null | null
"text" | "text"
)")) {
    EXPECT_EQ(values::compact_text(without_null_fields(parse(row.at(0)))), row.at(1)) << row.at(0);
  }
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
  for (const auto& [word, text] : kWords) {
    for (std::size_t at = 0; (at = cell.find(word, at)) != std::string::npos; at += text.size()) {
      cell.replace(at, word.size(), text);
    }
  }
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
other | callers | {} | null | {"next_steps":[],"a":1} | {"a":1}
# Own steps: no signal, no cap, repeats stay; only their null fields go.
search | symbols | {"query":"q"} | null | {"next_steps":[OWN,OWN,OWN,OWN,OWN],"total_count":0} | {"total_count":0,"next_steps":[OWN,OWN,OWN,OWN,OWN]}
status | - | - | null | {"next_steps":[{"tool":"t","args":{"a":null},"reason":null},null,3],"a":[null]} | {"a":[null],"next_steps":[{"tool":"t","args":{}},null,3]}
# Over the room the first step stays, and a signal; a usual step beside it goes.
status | - | - | null | {"next_steps":["LONGLONG","b"],"a":1} | {"a":1,"next_steps":["LONGLONG"]}
symbol | callers | - | null | {"fqn":"LONG","total":8} | {"fqn":"LONG","total":8,"next_steps":[{"tool":"quality","args":{"action":"impact","fqn":"LONG"},"reason":"8 callers: check the blast radius"}]}
# The freshness block is added as it is, before the steps; hints in it take their share of the room.
status | - | - | {"current":false,"page":null} | {"a":1} | {"a":1,"freshness":{"current":false,"page":null},"next_steps":[COMPONENTS]}
other | - | - | {"page":1} | {"freshness":0,"a":1} | {"freshness":{"page":1},"a":1}
symbol | - | - | null | {"fqn":"f"} | {"fqn":"f","next_steps":[REFERENCES,CALLERS]}
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

// Where the items of the lists and objects in `value` lie.
void add_addresses(const values::JsonValue& value, std::vector<const void*>& addresses) {
  if (const auto* list = value.list()) {
    addresses.push_back(list->begin());
    for (const auto& item : *list) add_addresses(item, addresses);
  } else if (const auto* object = value.object()) {
    addresses.push_back(object->begin());
    for (const auto& field : *object) add_addresses(field.value, addresses);
  }
}

std::vector<const void*> addresses(const values::JsonValue& value) {
  std::vector<const void*> all;
  add_addresses(value, all);
  return all;
}

TEST(FinishAnswer, CopiesNothingOfAnAnswerThatIsGivenUp) {
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    JsonObject answer{{"fqn", "f"}, {"inner", fuzz::Random(seed).request().answer}};
    const auto before = addresses(answer["inner"]);
    const JsonObject finished = finish_answer(std::move(answer), "symbol");
    EXPECT_TRUE(answer.empty());  // NOLINT(bugprone-use-after-move): it is consumed
    ASSERT_NE(finished["next_steps"].list(), nullptr);
    EXPECT_EQ(addresses(finished["inner"]), before);
  }
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

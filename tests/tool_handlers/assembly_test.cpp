#include "vantrex/tool_handlers/next_steps/assembly.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "support/table.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse;
using values::ForeignValue;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

// The reasons of `steps`: "s0,u1,".
std::string reasons(const JsonList& steps) {
  std::string text;
  for (const JsonValue& each : steps) text += std::string(*(*each.object())["reason"].string()) + ",";
  return text;
}

TEST(Deduplicated, KeepsTheFirstStepOfEachCall) {
  const auto rows = tests::table(R"(
# steps, whose reasons are their places | those that are kept
[{"tool":"a","args":{}},{"tool":"a","args":{}},{"tool":"b","args":{}}] | 0,2,
[{"tool":"a","args":{"x":1,"y":[{"p":1,"q":2}]}},{"args":{"y":[{"q":2,"p":1}],"x":1},"tool":"a"}] | 0,
[{"tool":"a","args":{"x":[1,2]}},{"tool":"a","args":{"x":[2,1]}}] | 0,1,
[{"tool":"a","args":[1]},{"tool":"a","args":[1.0]},{"tool":"a","args":[true]},{"tool":"a","args":["1"]}] | 0,1,2,3,
[{"tool":"a","args":0.0},{"tool":"a","args":-0.0},{"tool":"a","args":1e2},{"tool":"a","args":100.0}] | 0,1,2,
[{"tool":"a","args":{"x":null}},{"tool":"a","args":{}},{"tool":null,"args":{}},{"tool":null,"args":{}}] | 0,1,2,
[{"tool":"a,b","args":"c"},{"tool":"a","args":"b,c"}] | 0,1,
)");
  for (const auto& row : rows) {
    JsonValue steps = parse(row.at(0));
    for (std::size_t place = 0; place < steps.list()->size(); ++place) {
      steps.list()->mutable_item(place).object()->set("reason", std::to_string(place));
    }
    EXPECT_EQ(reasons(_deduplicated(*steps.list())), row.at(1)) << row.at(0);
  }
  const JsonValue foreign = ForeignValue::of(7, "x");
  EXPECT_EQ(_deduplicated(JsonList::of(step("a", "", {{"p", foreign}}), step("a", "", {{"p", "x"}}))).size(),
            1U);
}

TEST(Deduplicated, SaysWhichStepAndFieldAreMalformed) {
  const auto rows = tests::table(R"(
[{"tool":"a","args":{}},"text"] | steps[1] is no object
[{"tool":"a","reason":"r"}] | steps[0] has no field "args"
[{"tool":"a","args":{}},{"tool":"b","args":{}},{"args":{}}] | steps[2] has no field "tool"
)");
  for (const auto& row : rows) {
    const JsonValue steps = parse(row.at(0));
    try {
      _deduplicated(*steps.list());
      ADD_FAILURE() << row.at(0);
    } catch (const MalformedStep& error) {
      EXPECT_EQ(error.what(), row.at(1));
    }
  }
}

// One step for each letter; the same letters are the same calls.
JsonList steps_of(std::string_view letters, const std::string& source) {
  JsonList steps;
  for (std::size_t place = 0; place < letters.size(); ++place) {
    steps.push_back(step(letters.substr(place, 1), source + std::to_string(place)));
  }
  return steps;
}

TEST(ChooseSteps, PutsSignalsFirstWithoutRepeatsUpToTheCap) {
  const auto rows = tests::table(R"(
# signals | usual follow-ups | chosen | kept
 |  |  | 1
 | ab | u0,u1, | 1
 | abcd | u0,u1,u2, | 1
a |  | s0, | 1
a | bcd | s0,u0,u1, | 1
a | abc | s0,u1,u2, | 1
a | bbbc | s0,u0,u3, | 1
ab | cd | s0,s1,u0, | 2
aab | c | s0,s2,u0, | 3
abcd | e | s0,s1,s2, | 3
)");
  for (const auto& row : rows) {
    const Choice choice = choose_steps(steps_of(row.at(0), "s"), steps_of(row.at(1), "u"));
    EXPECT_EQ(reasons(choice.steps), row.at(2)) << row.at(0) << " and " << row.at(1);
    EXPECT_EQ(std::to_string(choice.keep.steps), row.at(3)) << row.at(0) << " and " << row.at(1);
  }
}

TEST(AddNextSteps, ChangesTheAnswerItIsGiven) {
  JsonObject answer = {{"next_steps", JsonList()}, {"fqn", "f"}, {"note", nullptr}};
  EXPECT_EQ(&_add_next_steps(answer, "symbol", {.action = "callers"}), &answer);
  EXPECT_EQ(
      values::compact_text(answer),
      R"({"fqn":"f","note":null,"next_steps":[{"tool":"symbol","args":{"action":"references","fqn":"f"},)"
      R"("reason":"Every use of it"}]})");
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

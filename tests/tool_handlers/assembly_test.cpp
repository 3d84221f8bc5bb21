#include "vantrex/tool_handlers/next_steps/assembly.h"

#include <algorithm>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/table.h"
#include "vantrex/tool_handlers/next_steps/follow_ups.h"
#include "vantrex/tool_handlers/next_steps/step.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::compact_size;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

static_assert(!std::is_assignable_v<Hint&, Hint> &&
              !std::is_assignable_v<decltype((std::declval<Hint&>().takes)), Takes>);

TEST(Step, KeepsItsArgumentsAsTheyAre) {
  EXPECT_EQ(values::compact_text(
                step(std::string_view("\xff"), std::string("a\xc3"), {{"z", nullptr}, {"a", "b"}})),
            "{\"tool\":\"\uFFFD\",\"args\":{\"z\":null,\"a\":\"b\"},\"reason\":\"a\uFFFD\"}");
}

TEST(Deduplicated, KeepsTheFirstStepOfEachCall) {
  for (const auto& row : tests::table(R"(
# steps | the reasons of the kept steps
[{"tool":"a","args":{"x":1,"y":[{"p":1,"q":2}]},"reason":0},{"tool":"a","args":{"y":[{"q":2,"p":1}],"x":1}}] | 0
[{"tool":"a","args":0,"reason":0},{"tool":"b","args":0,"reason":1},{"tool":"c","args":0,"reason":2},{"tool":"b","args":0},{"tool":"a","args":0}] | 0 1 2
[{"tool":"a","args":1,"reason":0},{"tool":"a","args":1.0,"reason":1},{"tool":"a","args":true,"reason":2}] | 0 1 2
[{"tool":"a","args":0.0,"reason":0},{"tool":"a","args":-0.0,"reason":1},{"tool":"a","args":-0.0}] | 0 1
[{"tool":"a","args":"y","reason":0},{"tool":"a","args":{"x":"y"},"reason":1},{"tool":"a","args":"y"}] | 0 1
[{"tool":"a","args":{"x":null},"reason":0},{"tool":"a","args":{},"reason":1},{"tool":null,"args":{},"reason":2}] | 0 1 2
[{"tool":"a,b","args":"c","reason":0},{"tool":"a","args":"b,c","reason":1}] | 0 1
)")) {
    std::string kept;
    const JsonValue steps = tests::parse(row.at(0));
    for (const JsonValue& each : _deduplicated(*steps.list())) {
      kept += (kept.empty() ? "" : " ") + (*each.object())["reason"].integer()->digits();
    }
    EXPECT_EQ(kept, row.at(1)) << row.at(0);
  }
  const JsonValue foreign = values::ForeignValue::of(7, "x");
  const JsonList steps = JsonList::of(step("a", "", {{"p", foreign}}), step("a", "", {{"p", "x"}}));
  EXPECT_EQ(_deduplicated(steps).size(), 1U);
}

// A step for each letter. Equal letters make equal calls; capital letters are not served.
JsonList steps_of(const std::string& letters) {
  JsonList steps;
  for (const char letter : letters) steps.push_back(step(std::string(1, letter), "because"));
  return steps;
}

TEST(ChooseSteps, GivesEachCandidateItsVerdict) {
  for (const auto& row : tests::table(R"(
# own steps | signals | usual follow-ups | the verdict on each (the position that a repeat repeats) | always kept
abXab |  |  | kkkkk | 1
 | a | bacdb | kk0kc1 | 1
 | aab | bcd | k0k2kc | 3
 | aX | Xbacd | knnk0kc | 1
 |  | ab | kk | 1
 | abcd | e | kkkcc | 3
)")) {
    Candidates candidates{steps_of(row.at(0) + row.at(1) + row.at(2)), row.at(1).size()};
    if (!row.at(0).empty()) candidates.giver = Giver::tool;
    ServedTools serves = {{"a"}, {"b"}, {"c"}, {"a"}};
    for (const char* tool : {"d", "a", "e"}) serves.add({tool});
    const Choice choice = choose_steps(candidates, &serves);
    std::string verdicts;
    JsonList kept;
    for (const auto& [verdict, repeated] : choice.decisions) {
      if (verdict == Verdict::kept) kept.push_back(candidates.steps[verdicts.size()]);
      verdicts += verdict == Verdict::repeat ? std::to_string(repeated)
                                             : std::string(1, "kn.c"[static_cast<int>(verdict)]);
    }
    EXPECT_EQ(choice.steps, kept);
    EXPECT_EQ(verdicts, row.at(3)) << row.at(0) << "," << row.at(1) << "," << row.at(2);
    EXPECT_EQ(std::to_string(choice.keep.steps), row.at(4));
  }
}

TEST(WithinShare, DropsFromTheLastWhatDoesNotFit) {
  const struct {
    std::size_t size, hints;  // bytes of the answer and of its hints (0, or 2 and more)
    std::vector<std::size_t> steps;
    std::size_t keep, left;
  } kRows[] = {
      // Lists of 306 and 307 bytes, with the key 320 and 321; the room is the floor of 320.
      {50, 0, {304}, 0, 1},
      {50, 0, {305}, 0, 0},
      // A list of 307 bytes, with the key 321; the room is 320.85 and 321.
      {1818, 0, {103, 103, 97}, 0, 2},
      {1819, 0, {103, 103, 97}, 0, 3},
      // Hints and steps together have 321 and 322 bytes; the room is 321.
      {1821, 2, {303}, 0, 1},
      {1820, 2, {304}, 0, 0},
      // The first `keep` steps stay, whatever the room.
      {50, 0, {400, 400, 400}, 9, 3},
      {50, 0, {400, 400, 400}, 2, 2},
      {900, 400, {50, 50}, 0, 0},
      {900, 400, {50, 50}, 1, 1},
  };
  const std::size_t frame = compact_size(step("t", ""));
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.size << " bytes, " << row.hints << " hints, keep " << row.keep);
    JsonObject answer{{"text", ""}};
    if (row.hints > 0) answer.set("tip", std::string(row.hints - 2, 'h'));
    answer.set("text", std::string(row.size - compact_size(answer), 't'));
    JsonList steps;
    for (const std::size_t size : row.steps) steps.push_back(step("t", std::string(size - frame, 'r')));
    const JsonList left = _within_share(answer, steps, Keep{row.keep});
    ASSERT_EQ(left.size(), row.left);
    EXPECT_TRUE(std::equal(left.begin(), left.end(), steps.begin()));
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

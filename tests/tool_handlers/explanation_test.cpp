#include "vantrex/tool_handlers/next_steps/explanation.h"

#include <algorithm>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "support/random_tree.h"
#include "support/table.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/explanation_steps.h"
#include "vantrex/tool_handlers/next_steps/optional_text.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::compact_size;
using values::compact_text;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

FinishOptions options_of(const tests::Request& request) {
  return {.action = request.action,
          .arguments = request.arguments ? &*request.arguments : nullptr,
          .freshness = request.freshness};
}

JsonList kept_steps(const std::vector<CandidateStep>& candidates) {
  JsonList kept;
  for (const CandidateStep& each : candidates) {
    if (each.verdict == Verdict::kept) kept.push_back(each.step);
  }
  return kept;
}

// What must be true of every explanation, whatever the answer.
void check(const Explanation& explained, const JsonObject& finished) {
  const JsonList kept = kept_steps(explained.candidates);
  EXPECT_EQ(kept.empty() ? JsonValue() : JsonValue(kept), finished["next_steps"]);

  std::size_t field_bytes = 0;
  for (const HintField& field : explained.hint_fields) field_bytes += field.bytes;
  EXPECT_EQ(field_bytes, explained.hint_bytes);
  EXPECT_TRUE(std::is_sorted(explained.hint_fields.begin(), explained.hint_fields.end(),
                             [](const HintField& a, const HintField& b) { return a.bytes > b.bytes; }));

  const std::size_t comma = explained.bytes == 2 && !kept.empty() ? 1 : 0;  // that an empty answer needs not
  EXPECT_EQ(explained.bytes + explained.step_bytes, compact_size(finished) + comma);
  const std::size_t key = kept.empty() ? 0 : std::string_view(R"(,"next_steps":)").size();
  EXPECT_EQ(explained.hint_bytes + explained.step_bytes, _hint_size(finished) + key);
  EXPECT_EQ(explained.is_floor, explained.room == 320.0);

  for (const CandidateStep& each : explained.candidates) {
    EXPECT_EQ(each.bytes, compact_size(each.step));
    EXPECT_TRUE(each.verdict != Verdict::over_room || each.over_room > 0);
  }
}

TEST(ExplainAnswer, TellsOfTheStepsThatTheAnswerGets) {
  std::set<std::string> missing = {"fits the room",
                                   "over the room, but the first step always stays",
                                   "over the room, but a signal always stays",
                                   "over the room",
                                   "no hits",
                                   "no fqn in any hit",
                                   "no path in any hit",
                                   "no component in any hit",
                                   "no files and no base branch",
                                   "floor",
                                   "share"};
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    const tests::Request request = tests::Random(seed).request();
    const std::string before = compact_text(request.answer);

    const Explanation explained = explain_answer(request.answer, request.tool, options_of(request));

    check(explained, finish_answer(request.answer, request.tool, options_of(request)));
    ASSERT_EQ(compact_text(request.answer), before);
    ASSERT_FALSE(HasFailure()) << before;
    for (const CandidateStep& each : explained.candidates) {
      std::string why = each.why();
      const std::size_t bytes = why.find(" by ");
      if (bytes != std::string::npos) why.erase(bytes, std::min(why.find(','), why.size()) - bytes);
      missing.erase(why);
    }
    for (const AbsentHint& each : explained.absent) missing.erase(each.why);
    missing.erase(explained.is_floor ? "floor" : "share");
  }
  EXPECT_EQ(missing, std::set<std::string>()) << "the random requests never came to these";
}

TEST(ExplainAnswer, SaysWhereTheHintsAre) {
  const auto rows = tests::table(R"(
# answer | paths and bytes of its hints, the largest first
{"note":"a","results":[{"x":1},[[],{"tip":"bcd"}]],"hints":{"note":1}} | hints 10, results[1][1].tip 5, note 3
{"a b":{"é_1":[{"":{"notes":[1,2]}}]},"hint":null} | ["a b"].é_1[0][""].notes 5
{"c\"d":{"tips":0},"next_steps":[],"e":{"next_steps":[]}} | e.next_steps 2, ["c\"d"].tips 1
{"x":[1,2]} | 
)");
  for (const auto& row : rows) {
    std::string fields;
    for (const HintField& each : explain_answer(tests::parse_object(row.at(0)), "x").hint_fields) {
      fields += (fields.empty() ? "" : ", ") + each.path + " " + std::to_string(each.bytes);
    }
    EXPECT_EQ(fields, row.at(1)) << row.at(0);
  }
}

TEST(ExplainAnswer, SaysWhatAHintLacked) {
  const auto rows = tests::table(R"(
# tool | action | answer | the hints that are absent
symbol | detail | {} | {"tool":"symbol","reason":"Who calls the best hit","action":"callers","takes":"fqn"} no fqn in any hit; {"tool":"symbol","reason":"Every use of it","action":"references","takes":"fqn"} no fqn in any hit; {"tool":"tests","reason":"Its file's tests","action":"for_file","takes":"path"} no path in any hit; 
symbol | callers | {"total":0,"fqn":"f"} | {"tool":"symbol","reason":"Every use of it","action":"references","takes":"fqn"} no hits; 
architecture |  | {} | {"tool":"architecture","reason":"What it depends on","action":"dependencies","takes":"component"} no component in any hit; 
git |  | {} | {"tool":"tests","reason":"Tests to run for these files","action":"recommended","takes":"changed_files"} no files and no base branch; 
git |  | {"next_steps":[{"tool":"own"}]} | 
quality | circular_deps | {} | 
other |  | {} | 
)");
  for (const auto& row : rows) {
    const JsonObject explained =
        explain_answer(tests::parse_object(row.at(2)), row.at(0), {.action = row.at(1)}).to_dict();
    std::string absent;
    for (const JsonValue& each : *explained["absent"].list()) {
      absent += compact_text((*each.object())["hint"]) + " " +
                std::string(*(*each.object())["why"].string()) + "; ";
    }
    EXPECT_EQ(absent, row.at(3)) << row.at(2);
  }
}

// One step for each letter; the same letters are the same calls.
JsonList steps_of(std::string_view letters) {
  JsonList steps;
  for (const char letter : letters) {
    steps.push_back(step(std::string(1, letter), "because of " + std::to_string(steps.size())));
  }
  return steps;
}

TEST(JudgedSteps, SayWhatBecameOfEach) {
  const auto rows = tests::table(R"(
# bytes of text in the answer | own | signals | usual follow-ups | what became of each
# A step takes 46 bytes: seven make a list of 330, with its key and the note of 2 it is 346 in a room of 320.
0 | abbaab |  |  | own: fits the room; own: fits the room; own: fits the room; own: fits the room; own: fits the room; own: fits the room; 
0 | abbaaba |  |  | own: fits the room; own: fits the room; own: fits the room; own: fits the room; own: fits the room; own: fits the room; own: over the room by 26 bytes; 
0 |  | a | bacdb | signal S: fits the room; usual U: fits the room; usual U: repeat of step 1; usual U: fits the room; usual U: over the cap of 3 steps; usual U: repeat of step 2; 
0 |  | aab | bcd | signal S: fits the room; signal S: repeat of step 1; signal S: fits the room; usual U: repeat of step 3; usual U: fits the room; usual U: over the cap of 3 steps; 
0 |  |  |  | 
400 |  | ab | cd | signal S: over the room by 144 bytes, but a signal always stays; signal S: over the room by 191 bytes, but a signal always stays; usual U: over the room by 238 bytes; usual U: over the cap of 3 steps; 
400 |  |  | ab | usual U: over the room by 144 bytes, but the first step always stays; usual U: over the room by 191 bytes; 
400 | ab |  |  | own: over the room by 144 bytes, but the first step always stays; own: over the room by 191 bytes; 
)");
  for (const auto& row : rows) {
    const JsonObject answer{{"note", std::string(std::stoul(row.at(0)), 'n')}};
    Candidates found{steps_of(row.at(1)), steps_of(row.at(2)), steps_of(row.at(3))};
    std::string told;
    const auto candidates = judged_steps(answer, found, "S", "U");
    for (const CandidateStep& each : candidates) told += each.from() + ": " + each.why() + "; ";
    EXPECT_EQ(told, row.at(4)) << row.at(1) << row.at(2) << row.at(3);
    const Choice choice = choose_steps(found);
    EXPECT_EQ(kept_steps(candidates), _within_share(answer, choice.steps, choice.keep));
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

#include "vantrex/tool_handlers/next_steps/explanation.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/table.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::compact_size;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

// The properties of every explanation of an answer and its finished form.
void check(const Explanation& explained, const JsonObject& finished) {
  JsonList kept;
  for (const CandidateStep& each : explained.candidates) {
    if (each.verdict == Verdict::kept) kept.push_back(each.step);
  }
  EXPECT_EQ(kept.empty() ? JsonValue() : JsonValue(kept), finished["next_steps"]);
  const bool has_own = !explained.candidates.empty() && explained.candidates[0].source == Source::own;
  EXPECT_TRUE(explained.absent.empty() || !has_own);

  std::size_t field_bytes = 0;
  for (const HintField& field : explained.hint_fields) field_bytes += field.bytes;
  EXPECT_EQ(field_bytes, explained.hint_bytes);
  EXPECT_EQ(explained.more_hint_fields, 0U);

  const std::size_t comma = explained.bytes == 2 && !kept.empty() ? 1 : 0;  // an empty answer needs none
  EXPECT_EQ(explained.bytes + explained.step_bytes, compact_size(finished) + comma);
  const std::size_t key = kept.empty() ? 0 : std::string_view(R"(,"next_steps":)").size();
  EXPECT_EQ(explained.hint_bytes + explained.step_bytes, _hint_size(finished) + key);
  const double share = 0.15 * static_cast<double>(explained.bytes + explained.step_bytes);
  EXPECT_EQ(explained.room, std::max(share, 320.0));
  EXPECT_EQ(explained.is_floor, explained.room == 320.0);
}

TEST(ExplainAnswer, AgreesWithTheFinishedAnswer) {
  std::set<std::string> missing = {"the server does not have it",
                                   "no fqn in any hit",
                                   "no component in any hit",
                                   "no files and no base branch",
                                   "share",
                                   "over the cap of 3 steps",
                                   "repeat of step 1"};
  for (std::uint64_t seed = 0; seed < 10000; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    const fuzz::Request request = fuzz::Random(seed).request();
    const Explanation explained = explain_answer(request.answer, request.tool, request.options());
    check(explained, finish_answer(request.answer, request.tool, request.options()));
    ASSERT_FALSE(HasFailure()) << values::compact_text(request.answer);
    for (const CandidateStep& each : explained.candidates) missing.erase(each.why());
    for (const AbsentHint& each : explained.absent) missing.erase(each.why);
    missing.erase(explained.is_floor ? "floor" : "share");
  }
  EXPECT_EQ(missing, std::set<std::string>()) << "never drawn";
}

TEST(ExplainAnswer, NamesThePathsOfHints) {
  for (const auto& row : tests::table(R"(
# answer | paths and bytes of its hints, the largest first
{"note":"a","results":[{"x":1},[[],{"tip":"bcd"}]],"hints":{"note":1},"tips":"b"} | hints 10, results[1][1].tip 5, note 3, tips 3
{"a b":{"é_1":[{"":{"notes":[1,2]}}]},"hint":null} | ["a b"].é_1[0][""].notes 5
{"c\"d":{"tips":0},"next_steps":[],"e":{"next_steps":[]}} | e.next_steps 2, ["c\"d"].tips 1
{"a":[[[[[[[[[[[[[[[[[[[[[[[[[[{"tip":1}]]]]]]]]]]]]]]]]]]]]]]]]]]} | a[0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0][0].tip 1
)")) {
    std::string fields;
    for (const HintField& each : explain_answer(tests::parse_object(row.at(0)), "x").hint_fields) {
      fields += (fields.empty() ? "" : ", ") + each.path + " " + std::to_string(each.bytes);
    }
    EXPECT_EQ(fields, row.at(1)) << row.at(0);
  }
}

TEST(ExplainAnswer, ListsTheLargestHintFields) {
  JsonList rows;
  for (std::size_t place = 0; place < 150; ++place) {
    rows.push_back(JsonObject{{"tip", std::string(7 * place % 150, 't')}});
  }
  const Explanation explained = explain_answer({{"rows", rows}}, "x");
  ASSERT_EQ(explained.hint_fields.size(), 100U);
  EXPECT_EQ(explained.more_hint_fields, 50U);
  for (std::size_t place = 0; place < 100; ++place) {
    const std::size_t letters = 149 - place;
    EXPECT_EQ(explained.hint_fields[place].bytes, letters + 2);
    EXPECT_EQ(explained.hint_fields[place].path, "rows[" + std::to_string(letters * 43 % 150) + "].tip");
  }
}

TEST(ExplainAnswer, SaysWhyEachCandidateIsKeptOrDropped) {
  for (const auto& row : tests::table(R"(
# letters of the answer's note | answer | the verdict on each
0 | {"next_steps":[1,1]} | own: fits the room; own: fits the room;
400 | {"next_steps":[1,1]} | own: over the room by 100 bytes, but the first step always stays; own: over the room by 102 bytes;
0 | {"fqn":"f","total":8} | signal symbol:callers: fits the room; usual symbol:callers: fits the room;
400 | {"fqn":"f","total":8} | signal symbol:callers: over the room by 198 bytes, but a signal always stays; usual symbol:callers: over the room by 284 bytes;
)")) {
    JsonObject answer = tests::parse_object(row.at(1));
    answer.set("note", std::string(std::stoul(row.at(0)), 'n'));
    std::string verdicts;
    for (const CandidateStep& each : explain_answer(answer, "symbol", {.action = "callers"}).candidates) {
      verdicts += (verdicts.empty() ? "" : " ") + each.from() + ": " + each.why() + ";";
    }
    EXPECT_EQ(verdicts, row.at(2)) << row.at(1);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

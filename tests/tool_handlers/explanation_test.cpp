#include "vantrex/tool_handlers/next_steps/explanation.h"

#include <algorithm>
#include <set>
#include <sstream>
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
  std::set<std::string> missing = {"the server does not have it", "no fqn in any hit",
                                   "no component in any hit", "no files and no base branch", "share"};
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

// Returns the tool and the action of "symbol:callers", or the tool alone.
ServedTool call_of(const std::string& text) {
  const std::size_t colon = text.find(':');
  return {text.substr(0, colon), colon == std::string::npos ? OptionalText() : text.substr(colon + 1)};
}

// What an explanation says besides the candidates: "usual file; signal ; absent symbol: no hits; ".
std::string told(const Explanation& explained) {
  std::string text =
      "usual " + std::string(explained.rows.usual) + (explained.rows.usual_of_tool ? " of the tool; " : "; ");
  if (!explained.rows.signal.empty()) text += "signal " + std::string(explained.rows.signal) + "; ";
  for (const AbsentHint& each : explained.absent) {
    text += "absent " + std::string(*each.hint["tool"].string()) + ": " + each.why + "; ";
  }
  for (const SilentSignal& each : explained.silent) {
    EXPECT_EQ(each.row, explained.rows.signal);
    text += "silent: " + each.why + "; ";
  }
  for (const std::string& each : explained.remarks) text += each + "; ";
  return text;
}

TEST(ExplainAnswer, TellsANewcomerOfMistakes) {
  for (const auto& row : tests::table(R"(
# call | what the server has | arguments | answer | what is told
serach |  | {} | {} | usual ; unknown tool "serach"; did you mean "search"?; 
xyz |  | {} | {} | usual ; unknown tool "xyz"; known are architecture, context, explore, file, files, git, quality, search, status, symbol, tests; 
saerch:code | symbol | {} | {} | usual ; unknown tool "saerch"; did you mean "search"?; 
explore |  | {} | {} | usual ; 
xyz | xyz:a | {} | {} | usual ; 
search:symbols |  | {} | {"symbols":[{"fqn":"f"}],"total":12,"query":"q"} | usual search of the tool; signal search:symbols; silent: 12 hits, not 0; 
search:semantic |  | {} | {"results":[]} | usual search of the tool; signal search:semantic; absent symbol: no hits; absent symbol: no hits; silent: no query; 
tests:for_file |  | {} | {"fqn":"f","total":9,"tests":[]} | usual tests of the tool; signal tests:for_file; absent file: no path in any hit; silent: 9 hits, not 0, no path; 
symbol:callers |  | {"fqn":"f"} | {"total":7} | usual symbol:callers; signal symbol:callers; silent: 7 hits, 8 are needed; 
symbol:references |  | {} | {"total":true,"fqn":"f"} | usual symbol:references; signal symbol:references; silent: 1 hit, 8 are needed; 
symbol:callers |  | {} | {"fqn":"f","total":0} | usual symbol:callers; signal symbol:callers; absent symbol: no hits; silent: 0 hits, 8 are needed; 
symbol:callers |  | {} | {"fqn":"f"} | usual symbol:callers; signal symbol:callers; silent: no count of hits; 
file |  | {} | {"hits":[{"fqn":"f"}]} | usual file; absent symbol: no fqn in any hit; absent file: no path in any hit; no hits: the answer has no list with one of the names symbols, results, matches, definitions, callers, references, dead_symbols, files, tests, components; 
file | search | {} | {"hits":[{"fqn":"f"}]} | usual file; 
git |  | {} | {"total":0} | usual git; absent tests: no files and no base branch; 
search |  | {} | {"results":[{"fqn":"f","kind":"Heading"}]} | usual search; absent symbol: 1 hit has an fqn but is no code symbol: kind "Heading"; absent symbol: 1 hit has an fqn but is no code symbol: kind "Heading"; 
quality:unused |  | {} | {"results":[{"fqn":7},{"fqn":"f","file":"a.md"},{"fqn":"g","kind":"key"}]} | usual quality of the tool; absent symbol: 2 hits have an fqn but are no code symbols: file "a.md"; 
symbol:caller |  | {} | {"fqn":"f"} | usual symbol of the tool; unknown action "caller" of symbol; did you mean "callers"?; 
symbol:raw |  | {} | {"fqn":"f"} | usual symbol of the tool; 
search:symbol | symbol:detail | {} | {"results":[{"fqn":"f"}],"total":1} | usual search of the tool; unknown action "symbol" of search; did you mean "symbols"?; 
search:code |  | {} | {"total_count":"3","total":0} | usual search:code; signal search:code; absent file: no hits; silent: no query; "total_count" is ignored: it is no integer; 
symbol:detail | symbol | {} | {"next_steps":[{"tool":"tests","args":{},"reason":"r"}]} | usual ; next_steps[0] calls what the server does not have; 
symbol | symbol | {} | {"found":false,"did_you_mean":["x"]} | usual ; a miss: the tables were not asked; 
symbol:references |  | {} | {"symbol":{"fqn":5},"callers":[{}]} | usual symbol:references; signal symbol:references; absent symbol: no fqn in any hit; silent: 1 hit, 8 are needed, no fqn; 
files |  | {} | {"next_steps":{"tool":"x"},"files":["a"]} | usual files; "next_steps" is ignored: it is no list; 
x |  | {} | {"next_steps":[0,{"tool":1},{"tool":"x","args":[]},{"tool":"x","args":{}},{"tool":"x","args":{},"reason":"r"}]} | usual ; next_steps[0] is sent as it is, but is no step: it is no object; next_steps[1] is sent as it is, but is no step: it has no "tool" that is a string; next_steps[2] is sent as it is, but is no step: it has no "args" that is an object; next_steps[3] is sent as it is, but is no step: it has no "reason" that is a string; 
)")) {
    const ServedTool call = call_of(row.at(0));
    ServedTools served;
    std::istringstream entries(row.at(1));
    for (std::string entry; std::getline(entries, entry, ',');) served.add(call_of(entry));
    const JsonObject arguments = tests::parse_object(row.at(2));
    EXPECT_EQ(told(explain_answer(tests::parse_object(row.at(3)), call.tool,
                                  {.action = call.action,
                                   .arguments = &arguments,
                                   .serves = row.at(1).empty() ? nullptr : &served})),
              row.at(4));
  }
}

std::string verdicts(const Explanation& explained) {
  std::string text;
  for (const CandidateStep& each : explained.candidates) text += each.from() + ": " + each.why() + ";";
  return text;
}

TEST(ExplainAnswer, SaysWhyEachCandidateIsKeptOrDropped) {
  for (const auto& row : tests::table(R"(
# letters of the answer's note | answer | the verdict on each
0 | {"next_steps":[1,1]} | own: fits the room;own: fits the room;
400 | {"next_steps":[1,1]} | own: over the room by 99 bytes, but the first step always stays;own: over the room by 101 bytes;
0 | {"fqn":"f","total":8} | signal symbol:callers: fits the room;usual symbol:callers: fits the room;
400 | {"fqn":"f","total":8} | signal symbol:callers: over the room by 198 bytes, but a signal always stays;usual symbol:callers: over the room by 284 bytes;
)")) {
    JsonObject answer = tests::parse_object(row.at(1));
    answer.set("note", std::string(std::stoul(row.at(0)), 'n'));
    EXPECT_EQ(verdicts(explain_answer(answer, "symbol", {.action = "callers"})), row.at(2)) << row.at(1);
  }
  const Catalogue own = Catalogue::from_json(tests::parse_object(
      R"({"hit_lists":["a","b","c","d","e","f","g","h","i","j","k"],"next_steps":{"t":[{"tool":"a","reason":""},{"tool":"b","reason":""},{"tool":"a","reason":"x"},
         {"tool":"c","reason":""},{"tool":"d","reason":""}]}})"));
  EXPECT_EQ(verdicts(explain_answer({}, "t", {.catalogue = &own})),
            "usual t: fits the room;usual t: fits the room;usual t: repeat of step 1;usual t: fits the room;"
            "usual t: over the cap of 3 steps;");
  const JsonObject miss = tests::parse_object(R"({"found":false,"did_you_mean":[],"next_steps":[1]})");
  EXPECT_EQ(explain_answer(miss, "t", {.catalogue = &own}).candidates.size(), 1U);
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "apps/shell.h"
#include "support/table.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tests {
namespace {

using values::JsonList;
using values::JsonObject;

JsonObject call(const char* tool, const char* action, const char* name, std::string_view argument) {
  return {{"tool", tool}, {"args", JsonObject{{"action", action}, {name, argument}}}};
}

// What tells one call from another.
std::string key_of(const JsonObject& call) {
  return canonical_text(JsonList::of(call["tool"], call["args"]));
}

// Runs the example over an index of this repository's own sources.
Ran code_index(const std::vector<JsonObject>& calls) {
  std::string input;
  for (const JsonObject& each : calls) input += compact_text(each) + "\n";
  return run("ctags --output-format=json --fields=+nl -R -f $(dirname $0)/index src apps && " +
                 std::string(NEXT_STEPS_CODE_INDEX) + " $(dirname $0)/index --follow",
             input);
}

std::map<std::string, JsonObject> answers_of(const Ran& ran) {
  std::map<std::string, JsonObject> answers;
  for (const auto& row : table(ran.out)) {
    const JsonObject line = parse_object(row.at(0));
    answers[key_of(*line["call"].object())] = *line["answer"].object();
  }
  return answers;
}

// What an agent may begin with: lists, searches, and misses near and far. Where
// nothing is near, the names are searched for a part that some of them have.
std::vector<JsonObject> beginnings() {
  const JsonObject files{{"tool", "files"}, {"args", JsonObject()}};
  std::vector<JsonObject> calls = {files, call("symbol", "detail", "fqn", "zz.Js"),
                                   call("file", "symbols", "path", "no/such.thing")};
  const auto listed = answers_of(code_index({files}));
  for (const auto& file : *listed.at(key_of(files))["files"].list()) {
    const std::string path(*file.string());
    calls.push_back(call("file", "symbols", "path", path));
    calls.push_back(call("file", "symbols", "path", "x" + path));
  }
  for (const auto& [key, answer] : answers_of(code_index(calls))) {
    if (!answer.contains("symbols")) continue;
    for (const auto& each : *answer["symbols"].list()) {
      const std::string name(*(*each.object())["name"].string());
      calls.push_back(call("search", "symbols", "query", name));
      if (name.size() > 7) calls.push_back(call("symbol", "detail", "fqn", "vantrex." + name + "s"));
    }
  }
  return calls;
}

TEST(CodeIndex, EveryStepThatItOffersCanBeFollowed) {
  const Ran ran = code_index(beginnings());
  const auto answers = answers_of(ran);
  std::map<std::string, int> followed;
  for (const auto& [key, answer] : answers) {
    if (!answer.contains("next_steps")) continue;
    for (const auto& each : *answer["next_steps"].list()) {
      const JsonObject& step = *each.object();
      const JsonObject& arguments = *step["args"].object();
      const std::string name =
          std::string(*step["tool"].string()) + " " + std::string(arguments["action"].string().value_or(""));
      ++followed[name];
      const auto found = answers.find(key_of(step));
      ASSERT_NE(found, answers.end()) << "not called: " << compact_text(step);
      EXPECT_TRUE(found->second["found"] == true || !found->second["total_count"].is_empty())
          << compact_text(step) << " led to " << compact_text(found->second);
    }
  }
  EXPECT_EQ(followed.size(), 4U);
  EXPECT_GT(followed["symbol detail"], 300);
  EXPECT_GT(followed["file symbols"], 100);
  EXPECT_EQ(ran.status, 0) << ran.err;
}

TEST(CodeIndex, RefusesCallsThatItCannotAnswer) {
  const auto rows = table(R"(
# call | what it says
[] | a call must be an object, not a list
{"tool":"symbol","args":{"action":"callers","fqn":"a"}} | no tool serves the call
{"tool":"symbol","args":{"action":"detail"}} | the call lacks its "fqn"
)");
  for (const auto& row : rows) {
    const Ran ran = run(std::string(NEXT_STEPS_CODE_INDEX) + " examples/index/models.json", row.at(0));
    EXPECT_EQ(ran.err, "code_index: " + row.at(1) + "\n");
    EXPECT_EQ(ran.status, 1);
  }
}

}  // namespace
}  // namespace vantrex::tests

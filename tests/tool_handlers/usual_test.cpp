#include "vantrex/tool_handlers/next_steps/usual.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse_object;
using values::compact_text;
using values::JsonValue;

TEST(HitCount, IsAStatedCountElseTheFirstList) {
  const struct {
    const char* answer;
    const char* count;
  } kRows[] = {
      {R"({"total":5,"total_count":3})", "3"},
      {R"({"total_count":0,"results":[1]})", "0"},
      {R"({"total_count":true})", "1"},
      {R"({"total_count":false,"total":4})", "0"},
      {R"({"total_count":2.5,"total":4})", "4"},
      {R"({"total_count":"3","total":null,"matches":[1,2]})", "2"},
      {R"({"total_count":100000000000000000000})", "100000000000000000000"},
      {R"({"files":[1,2],"symbols":[]})", "0"},
      {R"({"components":[1],"tests":[1,2],"symbols":{"a":1}})", "2"},
      {R"({"hits":[1],"count":1})", "null"},
  };
  for (const auto& row : kRows) {
    EXPECT_EQ(compact_text(JsonValue(_hit_count(parse_object(row.answer)))), row.count) << row.answer;
  }
}

TEST(Taken, ComesFromTheFirstSourceThatHasIt) {
  const struct {
    Takes takes;
    const char* answer;
    const char* arguments;
    const char* value;
  } kRows[] = {
      {Takes::query, R"({"query":"a"})", R"({"query":"r"})", "\"r\""},
      {Takes::query, R"({"query":"a"})", R"({"query":""})", "\"a\""},
      {Takes::query, R"({"query":[1]})", "{}", "[1]"},
      {Takes::query, R"({"symbols":[{"query":"h"}]})", R"({"query":false})", "null"},
      {Takes::fqn, R"({"fqn":"own","symbols":[{"fqn":"hit"}]})", R"({"fqn":"r"})", "\"own\""},
      {Takes::fqn, R"({"fqn":"","symbols":[{"fqn":"hit"}]})", "{}", "\"\""},
      {Takes::fqn, R"({"fqn":1,"results":[{"fqn":"second"}],"symbols":["text",{"fqn":2},{"fqn":"hit"}]})",
       "{}", "\"hit\""},
      {Takes::fqn,
       R"({"symbols":[{"fqn":"h","kind":"HEADING"},{"fqn":"d","file":"a.md"}],)"
       R"("callers":[{"fqn":"code","kind":7,"file":["a.md"]}]})",
       "{}", "\"code\""},
      {Takes::fqn, R"({"symbols":[{"fqn":"h","kind":"key"}]})", R"({"fqn":"r"})", "\"r\""},
      {Takes::fqn, R"({"symbols":{"fqn":"f"}})", R"({"fqn":3})", "null"},
      {Takes::path, R"({"file":"own","files":["listed"]})", R"({"path":"r"})", "\"own\""},
      {Takes::path, R"({"path":"own","tests":["text"],"files":[3,"listed"]})", "{}", "\"listed\""},
      {Takes::path, R"({"files":["listed"],"results":["text",{"path":"hit","kind":"key"}]})", "{}",
       "\"hit\""},
      {Takes::path, R"({"path":"own","file":null,"symbols":[{"file":"f"}]})", R"({"path":"r"})", "\"r\""},
      {Takes::path, R"({"symbols":["text"]})", R"({"path":{}})", "null"},
      {Takes::component, R"({"components":[{"name":1},{"name":"core"}]})", "{}", "\"core\""},
      {Takes::component, R"({"name":"own"})", R"({"component":"r","name":"r"})", "null"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.answer);
    EXPECT_EQ(compact_text(_taken(parse_object(row.answer), row.takes, parse_object(row.arguments))),
              row.value);
  }
}

// The tools and arguments of steps, for short: "symbol{...} file{...}".
std::string calls(const values::JsonList& steps) {
  std::string text;
  for (const JsonValue& each : steps) {
    const values::JsonObject& step = *each.object();
    text += (text.empty() ? "" : " ") + std::string(*step["tool"].string()) + compact_text(step["args"]);
  }
  return text;
}

TEST(Usual, TakesItsRowAndLeavesOutWhatTheAnswerCannotGive) {
  const std::string both = R"(symbol{"action":"detail","fqn":"f"} symbol{"action":"callers","fqn":"f"})";
  const std::string tests = R"(tests{"action":"recommended","changed_files":["p"]})";
  const std::string delta = R"(context{"action":"delta"})";
  const struct {
    const char* tool;
    std::optional<std::string> action;
    const char* answer;
    const char* arguments;
    std::string calls;
  } kRows[] = {
      {"search", "symbols", R"({"symbols":[{"fqn":"f"}]})", "{}", both},
      {"search", std::nullopt, R"({"symbols":[{"fqn":"f"}]})", "{}", both},
      {"search", "", R"({"symbols":[{"fqn":"f"}]})", "{}", both},
      {"search", "code", R"({"symbols":[{"fqn":"f"}],"files":["p"]})", "{}",
       R"(file{"action":"symbols","path":"p"})"},
      {"search:code", std::nullopt, R"({"files":["p"]})", "{}", R"(file{"action":"symbols","path":"p"})"},
      {"quality", "circular_deps", R"({"fqn":"f"})", "{}", ""},
      {"unknown", "callers", R"({"fqn":"f"})", "{}", ""},
      {"status", "any", R"({"total_count":0})", "{}", R"(architecture{"action":"components"})"},
      {"symbol", std::nullopt, R"({"fqn":""})", "{}",
       R"(symbol{"action":"references","fqn":""} symbol{"action":"callers","fqn":""})"},
      {"architecture", "components", R"({"components":[{"name":"c"}]})", "{}",
       R"(architecture{"action":"dependencies","component":"c"})"},
      // No hits leave out what is taken from hits, even if the request has it.
      {"symbol", "callers", R"({"total_count":0})", R"({"fqn":"f"})", ""},
      {"symbol", "callers", "{}", R"({"fqn":"f"})", R"(symbol{"action":"references","fqn":"f"})"},
      {"git", "log", R"({"total_count":0,"file":"p"})", "{}", tests + " " + delta},
      {"git", "log", "{}", "{}", delta},
      {"git", "log", R"({"base_branch":"b"})", "{}",
       R"(tests{"action":"recommended","base_branch":"b"} )" + delta},
      {"file", "symbols", R"({"symbols":[{"fqn":"f","kind":"key"}],"file":"p"})", "{}",
       R"(file{"action":"imports","path":"p"})"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.tool) + ":" + row.action.value_or("(none)") + " " + row.answer);
    EXPECT_EQ(calls(_usual(parse_object(row.answer), row.tool, row.action, parse_object(row.arguments))),
              row.calls);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

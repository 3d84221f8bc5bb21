#include "vantrex/tool_handlers/next_steps/signals.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse_object;

TEST(Signals, FireByWhatTheAnswerSays) {
  const std::string by_meaning =
      R"([{"tool":"search","args":{"action":"semantic","query":"q"},"reason":"No hits: search by meaning"}])";
  const std::string explore =
      R"([{"tool":"explore","args":{"query":"q"},"reason":"No close match: ask explore"}])";
  const auto impact = [](const std::string& fqn, const std::string& count) {
    return R"([{"tool":"quality","args":{"action":"impact","fqn":)" + fqn + R"(},"reason":")" + count +
           R"(: check the blast radius"}])";
  };
  const auto untested = [](const std::string& path) {
    return R"([{"tool":"tests","args":{"action":"recommended","changed_files":[)" + path +
           R"(]},"reason":"No test covers it: tests for a change of it"}])";
  };
  const struct {
    const char* tool;
    std::optional<std::string> action;
    const char* answer;
    const char* arguments;
    std::string steps;
  } kRows[] = {
      {"search", "symbols", R"({"total_count":0})", R"({"query":"q"})", by_meaning},
      {"search", "code", R"({"matches":[]})", R"({"query":"q"})", by_meaning},
      {"search", "definition", R"({"total":false,"query":"q"})", R"({"query":""})", by_meaning},
      {"search", "symbols", R"({"total_count":0,"query":"a"})", R"({"query":"q"})", by_meaning},
      {"search", "symbols", R"({"total_count":0,"query":["q"]})", R"({"query":0})",
       R"([{"tool":"search","args":{"action":"semantic","query":["q"]},"reason":"No hits: search by meaning"}])"},
      {"search", "semantic", R"({"results":[]})", R"({"query":"q"})", explore},
      {"search", "semantic", R"({"total_count":0})", R"({"query":"","text":"q"})", "[]"},
      {"search", "symbols", R"({"total_count":1})", R"({"query":"q"})", "[]"},
      {"search", "symbols", R"({"query":"q"})", R"({"query":"q"})", "[]"},
      {"search", std::nullopt, R"({"total_count":0})", R"({"query":"q"})", "[]"},
      {"search:symbols", std::nullopt, R"({"total_count":0})", R"({"query":"q"})", "[]"},
      {"search:", "symbols", R"({"total_count":0})", R"({"query":"q"})", "[]"},
      {"symbol", "callers", R"({"total_count":7})", R"({"fqn":"f"})", "[]"},
      {"symbol", "callers", R"({"total_count":8})", R"({"fqn":"f"})", impact("\"f\"", "8 callers")},
      {"symbol", "references", R"({"total":12,"fqn":"a"})", R"({"fqn":"f"})",
       impact("\"f\"", "12 references")},
      {"symbol", "callers", R"({"total":100000000000000000000,"fqn":"a"})", R"({"fqn":""})",
       impact("\"a\"", "100000000000000000000 callers")},
      {"symbol", "callers", R"({"total_count":-100000000000000000000,"fqn":"a"})", "{}", "[]"},
      {"symbol", "callers", R"({"total_count":9,"fqn":{"a":1}})", R"({"fqn":[]})",
       impact(R"({"a":1})", "9 callers")},
      {"symbol", "callers", R"({"total_count":99})", "{}", "[]"},
      {"symbol", "callers", R"({"fqn":"f"})", R"({"fqn":"f"})", "[]"},
      {"symbol", "detail", R"({"total_count":99})", R"({"fqn":"f"})", "[]"},
      {"tests", "for_file", R"({"tests":[]})", R"({"path":"p"})", untested("\"p\"")},
      {"tests", "for_file", R"({"total_count":0})", R"({"path":""})", untested("\"\"")},
      {"tests", "for_file", R"({"tests":[],"file":"p","path":"p"})", "{}", "[]"},
      {"tests", "for_file", R"({"tests":[]})", R"({"path":["p"]})", "[]"},
      {"tests", "for_file", R"({"tests":[1]})", R"({"path":"p"})", "[]"},
      {"tests", "for_file", "{}", R"({"path":"p"})", "[]"},
      {"file", "imports", R"({"total_count":0})", R"({"path":"p","query":"q"})", "[]"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(std::string(row.tool) + ":" + row.action.value_or("(none)") + " " + row.answer +
                 row.arguments);
    const auto steps = _signals(parse_object(row.answer), row.tool, row.action, parse_object(row.arguments));
    EXPECT_EQ(values::compact_text(steps), row.steps);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

#include "vantrex/tool_handlers/next_steps/usual.h"

#include <map>

#include <gtest/gtest.h>

#include "support/table.h"
#include "vantrex/tool_handlers/next_steps/optional_text.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse_object;
using values::compact_text;

TEST(HitCount, IsAStatedCountElseTheSizeOfTheFirstList) {
  const auto rows = tests::table(R"(
{"total":5,"total_count":3} | 3
{"total_count":0,"results":[1]} | 0
{"total_count":true} | 1
{"total_count":false,"total":4} | 0
{"total_count":2.5,"total":4} | 4
{"total_count":"3","total":null,"matches":[1,2]} | 2
{"total_count":100000000000000000000} | 100000000000000000000
{"files":[1,2],"symbols":[]} | 0
{"components":[1],"tests":[1,2],"symbols":{"a":1}} | 2
{"hits":[1],"count":1} | null
)");
  for (const auto& row : rows)
    EXPECT_EQ(compact_text(_hit_count(parse_object(row.at(0)))), row.at(1)) << row.at(0);
}

TEST(Taken, ComesFromTheFirstSourceThatHasIt) {
  const std::map<std::string, Takes> kinds = {
      {"query", Takes::query}, {"fqn", Takes::fqn}, {"path", Takes::path}, {"component", Takes::component}};
  const auto rows = tests::table(R"(
query | {"query":"a"} | {"query":"r"} | "r"
query | {"query":"a"} | {"query":""} | "a"
query | {"query":[1]} | {} | [1]
query | {"symbols":[{"query":"h"}]} | {"query":false} | null
fqn | {"fqn":"own","symbols":[{"fqn":"hit"}]} | {"fqn":"r"} | "own"
fqn | {"fqn":"","symbols":[{"fqn":"hit"}]} | {} | ""
fqn | {"fqn":1,"results":[{"fqn":"second"}],"symbols":["text",{"fqn":2},{"fqn":"hit"}]} | {} | "hit"
fqn | {"symbols":[{"fqn":"h","kind":"HEADING"},{"fqn":"d","file":"a.md"}],"callers":[{"fqn":"c","kind":7,"file":["a.md"]}]} | {} | "c"
fqn | {"symbols":[{"fqn":"h","kind":"key"}]} | {"fqn":"r"} | "r"
fqn | {"symbols":{"fqn":"f"}} | {"fqn":3} | null
path | {"file":"own","files":["listed"]} | {"path":"r"} | "own"
path | {"path":"own","tests":["text"],"files":[3,"listed"]} | {} | "listed"
path | {"files":["listed"],"results":["text",{"path":"hit","kind":"key"}]} | {} | "hit"
path | {"path":"own","file":null,"symbols":[{"file":"f"}]} | {"path":"r"} | "r"
path | {"symbols":["text"]} | {"path":{}} | null
component | {"components":[{"name":1},{"name":"core"}]} | {} | "core"
component | {"name":"own"} | {"component":"r","name":"r"} | null
)");
  for (const auto& row : rows) {
    const auto taken = _taken(parse_object(row.at(1)), kinds.at(row.at(0)), parse_object(row.at(2)));
    EXPECT_EQ(compact_text(taken), row.at(3)) << row.at(0) << " of " << row.at(1);
  }
}

TEST(Usual, TakesItsRowAndLeavesOutWhatTheAnswerCannotGive) {
  const auto rows = tests::table(R"(
# tool | action, - for none | answer | arguments | tool and arguments of each step
search | symbols | {"symbols":[{"fqn":"f"}]} | {} | symbol{"action":"detail","fqn":"f"} symbol{"action":"callers","fqn":"f"}
search | - | {"symbols":[{"fqn":"f"}]} | {} | symbol{"action":"detail","fqn":"f"} symbol{"action":"callers","fqn":"f"}
search |  | {"symbols":[{"fqn":"f"}]} | {} | symbol{"action":"detail","fqn":"f"} symbol{"action":"callers","fqn":"f"}
search | code | {"symbols":[{"fqn":"f"}],"files":["p"]} | {} | file{"action":"symbols","path":"p"}
search:code | - | {"files":["p"]} | {} | file{"action":"symbols","path":"p"}
quality | circular_deps | {"fqn":"f"} | {}
unknown | callers | {"fqn":"f"} | {}
status | any | {"total_count":0} | {} | architecture{"action":"components"}
symbol | - | {"fqn":""} | {} | symbol{"action":"references","fqn":""} symbol{"action":"callers","fqn":""}
architecture | components | {"components":[{"name":"c"}]} | {} | architecture{"action":"dependencies","component":"c"}
# No hits leave out what is taken from hits, even if the request has it.
symbol | callers | {"total_count":0} | {"fqn":"f"}
symbol | callers | {} | {"fqn":"f"} | symbol{"action":"references","fqn":"f"}
git | log | {"total_count":0,"file":"p"} | {} | tests{"action":"recommended","changed_files":["p"]} context{"action":"delta"}
git | log | {} | {} | context{"action":"delta"}
git | log | {"base_branch":"b"} | {} | tests{"action":"recommended","base_branch":"b"} context{"action":"delta"}
file | symbols | {"symbols":[{"fqn":"f","kind":"key"}],"file":"p"} | {} | file{"action":"imports","path":"p"}
)");
  for (const auto& row : rows) {
    const OptionalText action = row.at(1) == "-" ? OptionalText() : OptionalText(row.at(1));
    std::string calls;
    for (const auto& each : _usual(parse_object(row.at(2)), row.at(0), action, parse_object(row.at(3)))) {
      const values::JsonObject& step = *each.object();
      calls += (calls.empty() ? "" : " ") + std::string(*step["tool"].string()) + compact_text(step["args"]);
    }
    EXPECT_EQ(calls, row.size() > 4 ? row.at(4) : "") << row.at(0) << ":" << row.at(1) << " " << row.at(2);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

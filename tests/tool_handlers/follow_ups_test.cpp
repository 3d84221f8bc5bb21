#include <string>
#include <variant>

#include <gtest/gtest.h>

#include "support/table.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse_object;

// Examples worked by hand; random requests are compared with a naive reading.
TEST(FollowUps, ComeFromWhatTheAnswerSays) {
  for (const auto& row : tests::table(R"(
# tool | action, - for none | answer | arguments | tool and arguments of each step, and a signal's reason
search | symbols | {"total_count":0} | {"query":"q"} | search{"action":"semantic","query":"q"} No hits: search by meaning
search | definition | {"total":false,"query":"q"} | {"query":""} | search{"action":"semantic","query":"q"} No hits: search by meaning
search | semantic | {"results":[]} | {"query":"q"} | explore{"query":"q"} No close match: ask explore
symbol | references | {"total":12,"fqn":"a"} | {"fqn":"f"} | quality{"action":"impact","fqn":"f"} 12 references: check the blast radius symbol{"action":"callers","fqn":"a"}
symbol | callers | {"total":100000000000000000000,"fqn":""} | {"fqn":"f"} | quality{"action":"impact","fqn":"f"} 100000000000000000000 callers: check the blast radius symbol{"action":"references","fqn":""}
tests | for_file | {"tests":[]} | {"path":"p"} | tests{"action":"recommended","changed_files":["p"]} No test covers it: tests for a change of it
search | symbols | {"symbols":[{"fqn":"h","kind":"HEADING"},{"fqn":"d","file":"a.md"}],"callers":[{"fqn":"c"}]} | {} | symbol{"action":"detail","fqn":"c"} symbol{"action":"callers","fqn":"c"}
search | code | {"path":"own","tests":["text"],"files":[3,"p"]} | {} | file{"action":"symbols","path":"p"}
status | any | {"total_count":0} | {} | architecture{"action":"components"}
architecture | components | {"components":[{"name":"c"}]} | {} | architecture{"action":"dependencies","component":"c"}
# What a tests step covers.
context | - | {"file":"A","affected_files":[{"path":"B"},"C",{"path":"A"}],"files":["D"]} | {} | tests{"action":"recommended","changed_files":["A","B","C"]}
context | - | {"files":["0","1","2","3","4","5","6","7","8","9","0"],"base_branch":"b"} | {} | tests{"action":"recommended","changed_files":["0","1","2","3","4","5","6","7","8","9"]}
context | - | {"files":["0","1","2","3","4","5","6","7","8","9","X"],"base_branch":"b"} | {} | tests{"action":"recommended","base_branch":"b"}
context | - | {"file":"X","files":["0","1","2","3","4","5","6","7","8","9"],"base_branch":""} | {} | tests{"action":"recommended","changed_files":["X","0","1","2","3","4","5","6","7","8"]}
context | - | {"files":["A"],"files_omitted":[0],"base_branch":"b"} | {} | tests{"action":"recommended","base_branch":"b"}
git | log | {"base_branch":7} | {"path":""} | tests{"action":"recommended","changed_files":[""]} context{"action":"delta"}
)")) {
    const auto arguments = parse_object(row.at(3));
    const auto finished =
        finish_answer(parse_object(row.at(2)), row.at(0),
                      {.action = row.at(1) == "-" ? OptionalText() : row.at(1), .arguments = &arguments});
    std::string calls;
    if (const auto* steps = finished["next_steps"].list()) {
      for (const auto& each : *steps) {
        const values::JsonObject& step = *each.object();
        const std::string reason(*step["reason"].string());
        calls += (calls.empty() ? "" : " ") + std::string(*step["tool"].string()) +
                 values::compact_text(step["args"]) + (reason.find(": ") < reason.size() ? " " + reason : "");
      }
    }
    EXPECT_EQ(calls, row.at(4)) << row.at(0) << ":" << row.at(1) << " " << row.at(2);
  }
}

// No row of the catalogue takes a query, but one may.
TEST(FollowUps, MayTakeTheQuery) {
  static constexpr Hint kAgain{"search", "Again", "code", Takes::query};
  for (const auto& row : tests::table(R"(
{"query":"a"} | {"query":"r"} | {"action":"code","query":"r"}
{"query":"a"} | {"query":""} | {"action":"code","query":"a"}
{"symbols":[{"query":"h"}]} | {"query":false} | none
)")) {
    const auto answer = parse_object(row.at(0));
    const auto request = parse_object(row.at(1));
    const auto made = hint_arguments(kAgain, AnswerView(answer, &request));
    const auto* arguments = std::get_if<values::JsonObject>(&made);
    EXPECT_EQ(arguments == nullptr ? "none" : values::compact_text(*arguments), row.at(2)) << row.at(0);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

#include "vantrex/tool_handlers/next_steps/test_scope.h"

#include <gtest/gtest.h>

#include "support/table.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

TEST(TestsScope, IsTheFilesElseTheBaseElseTheFirstFiles) {
  const auto rows = tests::table(R"(
# answer | arguments | scope
{"file":"A","affected_files":[{"path":"B"},"C",{"path":"A"}],"files":["D"]} | {} | {"changed_files":["A","B","C"]}
{"affected_files":[],"files":["A","A",{"path":"B"},{"path":1},2,null]} | {"path":"P"} | {"changed_files":["A","B"]}
{"affected_files":[1,null,{"name":"x"}],"files":["A"]} | {} | {"changed_files":["A"]}
{"affected_files":{"path":"B"},"files":"A"} | {"path":"P"} | {"changed_files":["P"]}
{"file":"B"} | {"path":"A"} | {"changed_files":["B"]}
{"file":1} | {"path":2} | {}
{"file":""} | {} | {"changed_files":[""]}
{} | {"path":""} | {"changed_files":[""]}
# Ten files are all of them, eleven are cut; repeats do not count.
{"files":[0,"1","2","3","4","5","6","7","8","9","X"],"base_branch":"b"} | {} | {"changed_files":["1","2","3","4","5","6","7","8","9","X"]}
{"files":["0","1","2","3","4","5","6","7","8","9","0"],"base_branch":"b"} | {} | {"changed_files":["0","1","2","3","4","5","6","7","8","9"]}
{"files":["0","1","2","3","4","5","6","7","8","9","X"],"base_branch":"b"} | {} | {"base_branch":"b"}
{"file":"X","files":["0","1","2","3","4","5","6","7","8","9"],"base_branch":""} | {} | {"changed_files":["X","0","1","2","3","4","5","6","7","8"]}
# A list that was cut gives way to the branch base.
{"files":["A","B","C"],"files_omitted":true,"base_branch":"b"} | {} | {"base_branch":"b"}
{"files":["A"],"files_omitted":[0],"base_branch":"b"} | {} | {"base_branch":"b"}
{"files":["A","B","C"],"files_omitted":3} | {} | {"changed_files":["A","B","C"]}
{"files":["A"],"files_omitted":0,"base_branch":"b"} | {} | {"changed_files":["A"]}
{"files":["A"],"files_omitted":false,"base_branch":"b"} | {} | {"changed_files":["A"]}
{"files":["A"],"files_omitted":"","base_branch":"b"} | {} | {"changed_files":["A"]}
{"files":["A"],"files_omitted":null,"base_branch":"b"} | {} | {"changed_files":["A"]}
{"files":[],"base_branch":"b"} | {} | {"base_branch":"b"}
{"base_branch":""} | {} | {}
{"base_branch":7} | {} | {}
{"files":["A"],"files_omitted":1,"base_branch":{"b":1}} | {} | {"changed_files":["A"]}
)");
  for (const auto& row : rows) {
    const auto scope = _tests_scope(tests::parse_object(row.at(0)), tests::parse_object(row.at(1)));
    EXPECT_EQ(values::compact_text(scope), row.at(2)) << row.at(0);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

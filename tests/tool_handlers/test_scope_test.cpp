#include "vantrex/tool_handlers/next_steps/test_scope.h"

#include <gtest/gtest.h>

#include "support/json_text.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using tests::parse_object;

TEST(TestsScope, FollowsTheFilesElseTheBaseElseTheFirstFiles) {
  const struct {
    const char* answer;
    const char* arguments;
    const char* scope;
  } kRows[] = {
      {R"({"file":"A","affected_files":[{"path":"B"},"C",{"path":"A"}],"files":["D"]})", "{}",
       R"({"changed_files":["A","B","C"]})"},
      {R"({"affected_files":[],"files":["A","A",{"path":"B"},{"path":1},2,null]})", R"({"path":"P"})",
       R"({"changed_files":["A","B"]})"},
      {R"({"affected_files":[1,null,{"name":"x"}],"files":["A"]})", "{}", R"({"changed_files":["A"]})"},
      {R"({"affected_files":{"path":"B"},"files":"A"})", R"({"path":"P"})", R"({"changed_files":["P"]})"},
      {R"({"file":"B"})", R"({"path":"A"})", R"({"changed_files":["B"]})"},
      {R"({"file":1})", R"({"path":2})", "{}"},
      {R"({"file":""})", "{}", R"({"changed_files":[""]})"},
      {"{}", R"({"path":""})", R"({"changed_files":[""]})"},
      // Ten files are all of them, eleven are cut; repeats do not count.
      {R"({"files":["0","1","2","3","4","5","6","7","8","9"],"base_branch":"b"})", "{}",
       R"({"changed_files":["0","1","2","3","4","5","6","7","8","9"]})"},
      {R"({"files":["0","1","2","3","4","5","6","7","8","9","0"],"base_branch":"b","files_omitted":false})",
       "{}", R"({"changed_files":["0","1","2","3","4","5","6","7","8","9"]})"},
      {R"({"files":["0","1","2","3","4","5","6","7","8","9","X"],"base_branch":"b"})", "{}",
       R"({"base_branch":"b"})"},
      {R"({"file":"X","files":["0","1","2","3","4","5","6","7","8","9"],"base_branch":""})", "{}",
       R"({"changed_files":["X","0","1","2","3","4","5","6","7","8"]})"},
      // A list that was cut gives way to the branch base.
      {R"({"files":["A","B","C"],"files_omitted":true,"base_branch":"b"})", "{}", R"({"base_branch":"b"})"},
      {R"({"files":["A"],"files_omitted":[0],"base_branch":"b"})", "{}", R"({"base_branch":"b"})"},
      {R"({"files":["A"],"files_omitted":3})", "{}", R"({"changed_files":["A"]})"},
      {R"({"files":["A"],"files_omitted":0,"base_branch":"b"})", "{}", R"({"changed_files":["A"]})"},
      {R"({"files":["A"],"files_omitted":"","base_branch":"b"})", "{}", R"({"changed_files":["A"]})"},
      {R"({"files":["A"],"files_omitted":null,"base_branch":"b"})", "{}", R"({"changed_files":["A"]})"},
      {R"({"files":[],"base_branch":"b"})", "{}", R"({"base_branch":"b"})"},
      {R"({"base_branch":""})", "{}", "{}"},
      {R"({"base_branch":7})", "{}", "{}"},
      {R"({"files":["A"],"files_omitted":1,"base_branch":{"b":1}})", "{}", R"({"changed_files":["A"]})"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.answer);
    EXPECT_EQ(values::compact_text(_tests_scope(parse_object(row.answer), parse_object(row.arguments))),
              row.scope);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

#include "vantrex/tool_handlers/next_steps/signals.h"

#include <gtest/gtest.h>

#include "support/table.h"
#include "vantrex/tool_handlers/next_steps/optional_text.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

TEST(Signals, FireByWhatTheAnswerSays) {
  const auto rows = tests::table(R"(
# tool | action, - for none | answer | arguments | tool, arguments and reason of the signal, if any
search | symbols | {"total_count":0} | {"query":"q"} | search | {"action":"semantic","query":"q"} | No hits: search by meaning
search | code | {"matches":[]} | {"query":"q"} | search | {"action":"semantic","query":"q"} | No hits: search by meaning
search | definition | {"total":false,"query":"q"} | {"query":""} | search | {"action":"semantic","query":"q"} | No hits: search by meaning
search | symbols | {"total_count":0,"query":"a"} | {"query":"q"} | search | {"action":"semantic","query":"q"} | No hits: search by meaning
search | symbols | {"total_count":0,"query":["q"]} | {"query":0} | search | {"action":"semantic","query":["q"]} | No hits: search by meaning
search | semantic | {"results":[]} | {"query":"q"} | explore | {"query":"q"} | No close match: ask explore
search | semantic | {"total_count":0} | {"query":""}
search | semantic | {"total_count":1} | {"query":"q"}
search | symbols | {"total_count":1} | {"query":"q"}
search | symbols | {"query":"q"} | {"query":"q"}
search | - | {"total_count":0} | {"query":"q"}
search:symbols | - | {"total_count":0} | {"query":"q"}
search: | symbols | {"total_count":0} | {"query":"q"}
symbol | callers | {"total_count":7} | {"fqn":"f"}
symbol | callers | {"total_count":8} | {"fqn":"f"} | quality | {"action":"impact","fqn":"f"} | 8 callers: check the blast radius
symbol | references | {"total":12,"fqn":"a"} | {"fqn":"f"} | quality | {"action":"impact","fqn":"f"} | 12 references: check the blast radius
symbol | callers | {"total":100000000000000000000,"fqn":"a"} | {"fqn":""} | quality | {"action":"impact","fqn":"a"} | 100000000000000000000 callers: check the blast radius
symbol | callers | {"total_count":-100000000000000000000,"fqn":"a"} | {}
symbol | callers | {"total_count":9,"fqn":{"a":1}} | {"fqn":[]} | quality | {"action":"impact","fqn":{"a":1}} | 9 callers: check the blast radius
symbol | callers | {"total_count":99} | {}
symbol | callers | {"fqn":"f"} | {"fqn":"f"}
symbol | detail | {"total_count":99} | {"fqn":"f"}
tests | for_file | {"tests":[]} | {"path":"p"} | tests | {"action":"recommended","changed_files":["p"]} | No test covers it: tests for a change of it
tests | for_file | {"total_count":0} | {"path":""} | tests | {"action":"recommended","changed_files":[""]} | No test covers it: tests for a change of it
tests | for_file | {"tests":[],"file":"p","path":"p"} | {}
tests | for_file | {"tests":[]} | {"path":["p"]}
tests | for_file | {"tests":[1]} | {"path":"p"}
tests | for_file | {} | {"path":"p"}
file | imports | {"total_count":0} | {"path":"p","query":"q"}
)");
  for (const auto& row : rows) {
    const OptionalText action = row.at(1) == "-" ? OptionalText() : OptionalText(row.at(1));
    const auto steps =
        _signals(tests::parse_object(row.at(2)), row.at(0), action, tests::parse_object(row.at(3)));
    values::JsonList expected;
    if (row.size() > 4) expected.push_back(step(row.at(4), row.at(6), tests::parse_object(row.at(5))));
    EXPECT_EQ(values::compact_text(steps), values::compact_text(expected))
        << row.at(0) << row.at(1) << row.at(2);
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

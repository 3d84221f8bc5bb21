#include <set>
#include <string>

#include <gtest/gtest.h>

#include "support/naive.h"
#include "support/random_tree.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tests {
namespace {

using tool_handlers::next_steps::finish_answer;
using tool_handlers::next_steps::NEXT_STEPS;

// What the naive reading must have come across, for the comparison to say
// something: every row, every signal, and each way that a rule can go.
std::set<std::string> every_rule() {
  std::set<std::string> rules = {"signal search by meaning",
                                 "signal ask explore",
                                 "signal blast radius",
                                 "signal untested",
                                 "scope changed_files",
                                 "scope first files",
                                 "scope base_branch",
                                 "scope empty",
                                 "requested path",
                                 "requested fqn",
                                 "no code",
                                 "boolean count",
                                 "own steps",
                                 "room by share",
                                 "room by floor",
                                 "dropped"};
  for (const auto& row : NEXT_STEPS) rules.insert("row " + std::string(row.key));
  return rules;
}

TEST(FinishAnswer, EqualsTheNaiveReading) {
  std::set<std::string> missing = every_rule();
  for (std::uint64_t seed = 0; seed < 40000; ++seed) {
    Random random(seed);
    const Request request = random_request(random, Domain::any);
    const std::string before = naive::json_text(request.answer);
    const naive::Finished expected = naive::finish(request);

    const values::JsonObject finished =
        finish_answer(request.answer, request.tool,
                      {.action = request.action,
                       .arguments = request.arguments ? &*request.arguments : nullptr,
                       .freshness = request.freshness});

    ASSERT_EQ(values::compact_text(finished), naive::json_text(expected.answer))
        << "seed " << seed << ", " << request.tool << ":" << request.action.value_or("(none)") << " "
        << before;
    ASSERT_TRUE(finished == expected.answer) << "seed " << seed;
    ASSERT_EQ(naive::json_text(request.answer), before) << "seed " << seed;
    for (const std::string& rule : expected.reached) missing.erase(rule);
  }
  EXPECT_EQ(missing, std::set<std::string>()) << "the random requests never came to these rules";
}

}  // namespace
}  // namespace vantrex::tests

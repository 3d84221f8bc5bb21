#include "fuzz/support/naive.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::fuzz {
namespace {

namespace next_steps = tool_handlers::next_steps;

// What the naive reading must have come across, for the comparison to say
// something: every row, every signal, and each way that a rule can go.
std::set<std::string> every_rule() {
  std::set<std::string> rules = {
      "scope changed_files", "scope first files", "scope base_branch", "scope empty",
      "requested path",      "requested fqn",     "no code",           "boolean count",
      "own steps",           "room by share",     "room by floor",     "dropped"};
  for (const auto& row : next_steps::NEXT_STEPS) rules.insert("row " + std::string(row.key));
  for (const auto& row : next_steps::_SIGNALS) rules.insert("signal " + std::string(row.key));
  return rules;
}

TEST(FinishAnswer, EqualsTheNaiveReading) {
  std::set<std::string> missing = every_rule();
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    const Request request = Random(seed).request();
    const std::string before = naive::json_text(request.answer);
    const naive::Finished expected = naive::finish(request);
    const auto finished = next_steps::finish_answer(request.answer, request.tool, request.options());
    ASSERT_EQ(values::compact_text(finished), naive::json_text(expected.answer))
        << "seed " << seed << ", " << request.tool << ":" << request.action.value_or("(none)") << " "
        << before;
    ASSERT_EQ(finished, expected.answer) << "seed " << seed;
    ASSERT_EQ(values::compact_size(finished), naive::json_text(expected.answer).size()) << "seed " << seed;
    ASSERT_EQ(next_steps::_hint_size(finished), next_steps::_hint_size(expected.answer)) << "seed " << seed;
    ASSERT_EQ(naive::json_text(request.answer), before) << "seed " << seed;
    for (const std::string& rule : expected.reached) missing.erase(rule);
  }
  EXPECT_EQ(missing, std::set<std::string>()) << "the random requests never came to these rules";
}

TEST(FinishAnswer, EqualsTheNaiveReadingOfAThousandOwnSteps) {
  for (const std::size_t text_bytes : {0U, 100'000U, 1'000'000U}) {
    values::JsonList own;
    for (int place = 0; place < 1000; ++place) own.push_back(next_steps::step("t", std::to_string(place)));
    const Request request = {
        {{"next_steps", own}, {"text", std::string(text_bytes, 't')}}, "other", {}, {}, {}};
    EXPECT_EQ(next_steps::finish_answer(request.answer, "other"), naive::finish(request).answer);
  }
}

}  // namespace
}  // namespace vantrex::fuzz

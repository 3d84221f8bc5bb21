#include "fuzz/support/naive.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/table.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::fuzz {
namespace {

namespace next_steps = tool_handlers::next_steps;

// What the requests must reach: every row, every signal, and both sides of each rule.
std::set<std::string> all_rules() {
  std::set<std::string> rules;
  for (const auto& names : tests::table(R"(
scope changed_files | scope first files | scope base_branch | scope empty | requested path | requested fqn
no code | boolean count | own steps | room by share | room by floor | dropped | large freshness hints
indexed answer | indexed arguments
signal of a served tool | signal of a served action | signal not served
usual of a served tool | usual of a served action | usual not served
)")) {
    rules.insert(names.begin(), names.end());
  }
  for (const auto& row : next_steps::NEXT_STEPS) rules.insert("row " + std::string(row.key));
  for (const auto& row : next_steps::_SIGNALS) rules.insert("signal " + std::string(row.key));
  return rules;
}

TEST(FinishAnswer, EqualsTheNaiveImplementation) {
  constexpr std::size_t kUnindexedFields = 32;
  std::set<std::string> missing = all_rules();
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    const Request request = Random(seed).request();
    const std::string before = naive::json_text(request.answer);
    const naive::Finished expected = naive::finish(request);
    const std::string text = naive::json_text(expected.answer);
    const auto finished = next_steps::finish_answer(request.answer, request.tool, request.options());
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", " << request.tool << ":"
                                    << request.action.value_or("(none)") << " " << before);
    ASSERT_EQ(values::compact_text(finished), text);
    ASSERT_EQ(finished, expected.answer);
    ASSERT_EQ(values::compact_size(finished), text.size());
    ASSERT_EQ(next_steps::_hint_size(finished), naive::hint_size(expected.answer));
    ASSERT_EQ(next_steps::_hint_size(request.freshness), naive::hint_size(request.freshness));
    ASSERT_EQ(naive::json_text(request.answer), before);
    for (const std::string& rule : expected.reached) missing.erase(rule);
    if (request.answer.size() > kUnindexedFields) missing.erase("indexed answer");
    if (request.arguments && request.arguments->size() > kUnindexedFields) missing.erase("indexed arguments");
    if (naive::hint_size(request.freshness) > next_steps::HINT_FLOOR_BYTES)
      missing.erase("large freshness hints");
  }
  EXPECT_EQ(missing, std::set<std::string>()) << "never reached";
}

TEST(FinishAnswer, EqualsTheNaiveImplementationOfAThousandOwnSteps) {
  for (const std::size_t text_bytes : {0U, 100'000U, 1'000'000U}) {
    values::JsonList own;
    for (int place = 0; place < 1000; ++place) own.push_back(next_steps::step("t", std::to_string(place)));
    const Request request = {
        {{"next_steps", own}, {"text", std::string(text_bytes, 't')}}, "other", {}, {}, nullptr};
    EXPECT_EQ(next_steps::finish_answer(request.answer, "other"), naive::finish(request).answer);
  }
}

}  // namespace
}  // namespace vantrex::fuzz

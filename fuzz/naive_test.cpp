#include "fuzz/support/naive.h"

#include <initializer_list>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "fuzz/support/drawn.h"
#include "fuzz/support/random_tree.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::fuzz {
namespace {

namespace next_steps = tool_handlers::next_steps;

// What the requests must come to, for the comparison to say something: every
// class of value, every row, every signal, and each way that a rule can go.
std::set<std::string> everything() {
  std::set<std::string> names = every_class();
  names.insert({"scope changed_files",
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
                "dropped",
                "large freshness hints",
                "indexed answer",
                "indexed arguments",
                "signal of a served tool",
                "signal of a served action",
                "signal not served",
                "usual of a served tool",
                "usual of a served action",
                "usual not served"});
  for (const auto& row : next_steps::NEXT_STEPS) names.insert("row " + std::string(row.key));
  for (const auto& row : next_steps::_SIGNALS) names.insert("signal " + std::string(row.key));
  return names;
}

void count_request(const Request& request, Counts& came) {
  constexpr std::size_t kFloorBytes = 320;
  const values::JsonObject arguments = request.arguments.value_or(values::JsonObject());
  for (const values::JsonValue& part :
       std::initializer_list<values::JsonValue>{request.answer, arguments, request.freshness})
    count_classes(part, came);
  if (request.answer.size() > 32) ++came["indexed answer"];
  if (arguments.size() > 32) ++came["indexed arguments"];
  if (naive::hint_size(request.freshness) > kFloorBytes) ++came["large freshness hints"];
}

TEST(FinishAnswer, EqualsTheNaiveReading) {
  Counts came;
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    const Request request = Random(seed).request();
    const std::string before = naive::json_text(request.answer);
    const naive::Finished expected = naive::finish(request);
    const std::string text = naive::json_text(expected.answer);
    const auto finished = next_steps::finish_answer(request.answer, request.tool, request.options());
    ASSERT_EQ(values::compact_text(finished), text) << "seed " << seed << ", " << request.tool << ":"
                                                    << request.action.value_or("(none)") << " " << before;
    ASSERT_EQ(finished, expected.answer) << "seed " << seed;
    ASSERT_EQ(values::compact_size(finished), text.size()) << "seed " << seed;
    ASSERT_EQ(next_steps::_hint_size(finished), naive::hint_size(expected.answer)) << "seed " << seed;
    ASSERT_EQ(naive::json_text(request.answer), before) << "seed " << seed;
    for (const std::string& rule : expected.reached) ++came[rule];
    count_request(request, came);
  }
  for (const std::string& name : everything())
    EXPECT_GT(came[name], 0U) << "the random requests never came to: " << name;
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

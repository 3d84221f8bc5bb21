#include "vantrex/tool_handlers/next_steps/catalogue.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

#include "fuzz/support/random_catalogue.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::fuzz {
namespace {

namespace next_steps = tool_handlers::next_steps;
using next_steps::Catalogue;
using values::JsonObject;

TEST(Catalogue, WithOtherNamesGivesTheSameStepsUnderThem) {
  std::size_t with_steps = 0;
  for (std::uint64_t seed = 0; seed < 5000; ++seed) {
    Random random(seed);
    const JsonObject json = random_catalogue(random);
    const Request request = request_to_own_server(random);
    const Renaming renaming(random);
    const Catalogue catalogue = Catalogue::from_json(json);
    const Catalogue renamed = Catalogue::from_json(renaming.catalogue(json));
    const auto finish = [](const Request& asked, const Catalogue& with) {
      next_steps::FinishOptions options = asked.options();
      options.catalogue = &with;
      return next_steps::finish_answer(asked.answer, asked.tool, options);
    };
    const JsonObject finished = finish(request, catalogue);
    SCOPED_TRACE(testing::Message() << "seed " << seed << values::compact_text(json));
    // A freshness block is not the answer's, so its fields keep their names.
    Request again = renaming.request(request);
    JsonObject expected = renaming.finished(finished);
    if (expected.contains("freshness")) expected.set("freshness", finished["freshness"]);
    if (again.answer.contains("freshness")) again.answer.set("freshness", request.answer["freshness"]);
    ASSERT_EQ(finish(again, renamed), expected);
    if (finished.contains("next_steps")) ++with_steps;
  }
  EXPECT_GT(with_steps, 500U);
}

}  // namespace
}  // namespace vantrex::fuzz

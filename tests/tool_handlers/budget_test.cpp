#include "vantrex/tool_handlers/next_steps/budget.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::compact_size;
using values::JsonList;
using values::JsonObject;

TEST(WithinShare, DropsFromTheLastWhatDoesNotFit) {
  const struct {
    std::size_t size, hints;  // of the answer; hints are none or at least 2 bytes
    std::vector<std::size_t> steps;
    std::size_t keep, left;
  } kRows[] = {
      // Lists of 306 and 307 bytes in the floor of 320.
      {50, 0, {304}, 0, 1},
      {50, 0, {305}, 0, 0},
      {50, 2, {302}, 0, 1},
      {50, 3, {302}, 0, 0},
      // A list of 307 bytes, its first two of 209: the room is 320.85 and 321.
      {1818, 0, {103, 103, 97}, 0, 2},
      {1819, 0, {103, 103, 97}, 0, 3},
      // Hints and steps together are 321 and 322 where the room is 321.
      {1821, 2, {303}, 0, 1},
      {1820, 2, {304}, 0, 0},
      // What is kept is kept without a test.
      {50, 0, {400, 400, 400}, 9, 3},
      {50, 0, {400, 400, 400}, 2, 2},
      {900, 400, {50, 50}, 0, 0},
      {900, 400, {50, 50}, 1, 1},
      {50, 0, {}, 1, 0},
  };
  const std::size_t frame = compact_size(step("t", ""));
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::Message() << row.size << " bytes, " << row.hints << " hints, keep " << row.keep);
    JsonObject answer{{"text", ""}};
    if (row.hints > 0) answer.set("tip", std::string(row.hints - 2, 'h'));
    answer.set("text", std::string(row.size - compact_size(answer), 't'));
    JsonList steps;
    for (const std::size_t size : row.steps) steps.push_back(step("t", std::string(size - frame, 'r')));
    const JsonList left = _within_share(answer, steps, Keep{row.keep});
    ASSERT_EQ(left.size(), row.left);
    EXPECT_TRUE(std::equal(left.begin(), left.end(), steps.begin()));
  }
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

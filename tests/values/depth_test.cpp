#include <optional>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "support/small_stack.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::values {
namespace {

using tests::deep_value;

void use_deep_values() {
  const JsonValue value = deep_value("a leaf of more than 14 bytes");
  const std::size_t bytes = tests::kLevels / 2 * 8 + 30;
  EXPECT_FALSE(value == deep_value("another leaf"));
  EXPECT_EQ(compact_size(value), bytes);
  EXPECT_EQ(compact_text(value).size(), bytes);
  EXPECT_EQ(canonical_text(value), compact_text(value));

  const JsonObject answer = {{"deep", value}, {"note", value}};
  std::optional<JsonObject> finished = tool_handlers::next_steps::finish_answer(answer, "other");
  EXPECT_EQ(tool_handlers::next_steps::_hint_size(*finished), bytes);
  EXPECT_TRUE(*finished == answer);

  // Destruction does not allocate, neither of a copy nor of a built value.
  std::optional<JsonValue> built = JsonList::of(deep_value("leaf"), *finished);
  const std::size_t before = tests::allocations().taken;
  finished.reset();
  built.reset();
  EXPECT_EQ(tests::allocations().taken, before);
}

TEST(Depth, AMillionLevelsFitOnASmallStack) {
  tests::on_a_small_stack(use_deep_values);
}

}  // namespace
}  // namespace vantrex::values

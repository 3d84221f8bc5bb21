#include <cstddef>
#include <pthread.h>
#include <utility>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/budget.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::values {
namespace {

constexpr std::size_t kLevels = 1'000'000;
constexpr std::size_t kStackBytes = std::size_t{256} << 10;

// Lists and objects by turns: [{"a":[{"a":"leaf"}]}].
JsonValue deep_value(const char* leaf) {
  JsonValue value = leaf;
  for (std::size_t level = 0; level < kLevels; level += 2) {
    JsonObject object;
    object.set("a", std::move(value));
    value = JsonList::of(std::move(object));
  }
  return value;
}

void use_deep_values() {
  const JsonValue value = deep_value("leaf");
  const std::size_t bytes = kLevels / 2 * 8 + 6;
  const JsonValue copy = value;
  EXPECT_TRUE(copy == value);
  EXPECT_FALSE(copy == deep_value("fall"));
  EXPECT_EQ(compact_size(value), bytes);
  EXPECT_EQ(compact_text(copy).size(), bytes);
  EXPECT_EQ(canonical_text(value), compact_text(value));

  const JsonObject answer = {{"deep", value}, {"note", copy}};
  const JsonObject finished = tool_handlers::next_steps::finish_answer(answer, "status");
  EXPECT_EQ(tool_handlers::next_steps::_hint_size(finished), bytes + compact_size(finished["next_steps"]));
  JsonObject changed = finished;
  changed.set("note", nullptr);
  EXPECT_TRUE(finished["note"] == value);
}

// Destroying a value takes no memory, however deep it is and however it came
// about.
void destroy_deep_values() {
  auto* built = new JsonValue(deep_value("a leaf of more than 14 bytes"));
  auto* copy = new JsonValue(*built);
  auto* mixed = new JsonValue(JsonObject{{"built", JsonList::of(*built)}, {"more", deep_value("leaf")}});
  const std::size_t before = tests::allocations();
  delete built;
  delete copy;
  delete mixed;
  EXPECT_EQ(tests::allocations(), before);
}

void run_on_small_stack(void (*work)()) {
  pthread_attr_t attributes;
  ASSERT_EQ(pthread_attr_init(&attributes), 0);
  ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackBytes), 0);
  pthread_t thread{};
  const auto body = [](void* argument) -> void* {
    (*static_cast<void (**)()>(argument))();
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, &attributes, body, &work), 0);
  ASSERT_EQ(pthread_join(thread, nullptr), 0);
  pthread_attr_destroy(&attributes);
}

TEST(Depth, AMillionLevelsNeedLittleStack) {
  run_on_small_stack(use_deep_values);
}

TEST(Depth, DestructionTakesNoMemory) {
  run_on_small_stack(destroy_deep_values);
}

}  // namespace
}  // namespace vantrex::values

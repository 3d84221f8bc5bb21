#include "vantrex/tool_handlers/next_steps/catalogue.h"

#include <optional>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::compact_text;

static_assert(!Hint("tool", "why").action && !Hint("tool", "why").takes);
static_assert(Hint("tool", "why", std::nullopt, Takes::fqn) != Hint("tool", "why", "act", Takes::fqn));
static_assert(!std::is_assignable_v<Hint&, Hint> && !std::is_assignable_v<decltype((_DETAIL.takes)), Takes>);
static_assert(NEXT_STEPS.find("symbol")->hints()[0] == &_REFERENCES && !NEXT_STEPS.find("quality:other"));

TEST(Step, KeepsItsArgumentsAsTheyAre) {
  EXPECT_TRUE(*NEXT_STEPS.find("search")->hints()[0] == _DETAIL);
  EXPECT_EQ(compact_text(step("t", "r", {{"z", nullptr}, {"a", "b"}})),
            R"({"tool":"t","args":{"z":null,"a":"b"},"reason":"r"})");
  EXPECT_EQ(compact_text(step(std::string_view("\xff"), std::string("a\xc3"))),
            "{\"tool\":\"\uFFFD\",\"args\":{},\"reason\":\"a\uFFFD\"}");
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

#include "vantrex/tool_handlers/next_steps/assembly.h"

#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/table.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::JsonList;
using values::JsonValue;

static_assert(!std::is_assignable_v<Hint&, Hint> && !std::is_assignable_v<decltype((_DETAIL.takes)), Takes>);

TEST(Step, KeepsItsArgumentsAsTheyAre) {
  EXPECT_EQ(values::compact_text(
                step(std::string_view("\xff"), std::string("a\xc3"), {{"z", nullptr}, {"a", "b"}})),
            "{\"tool\":\"\uFFFD\",\"args\":{\"z\":null,\"a\":\"b\"},\"reason\":\"a\uFFFD\"}");
}

TEST(Deduplicated, KeepsTheFirstStepOfEachCall) {
  for (const auto& row : tests::table(R"(
# steps | the reasons of those that are kept, or which one is malformed
[{"tool":"a","args":{"x":1,"y":[{"p":1,"q":2}]},"reason":0},{"args":{"y":[{"q":2,"p":1}],"x":1},"tool":"a"}] | 0
[{"tool":"a","args":0,"reason":0},{"tool":"b","args":0,"reason":1},{"tool":"c","args":0,"reason":2},{"tool":"b","args":0},{"tool":"a","args":0}] | 0 1 2
[{"tool":"a","args":{"x":[1,2]},"reason":0},{"tool":"a","args":{"x":[2,1]},"reason":1}] | 0 1
[{"tool":"a","args":1,"reason":0},{"tool":"a","args":1.0,"reason":1},{"tool":"a","args":true,"reason":2}] | 0 1 2
[{"tool":"a","args":0.0,"reason":0},{"tool":"a","args":-0.0,"reason":1},{"tool":"a","args":-0.0}] | 0 1
[{"tool":"a","args":"y","reason":0},{"tool":"a","args":{"x":"y"},"reason":1},{"tool":"a","args":"y"}] | 0 1
[{"tool":"a","args":{"x":null},"reason":0},{"tool":"a","args":{},"reason":1},{"tool":null,"args":{},"reason":2}] | 0 1 2
[{"tool":"a,b","args":"c","reason":0},{"tool":"a","args":"b,c","reason":1}] | 0 1
[{"tool":"a","args":{}},"text"] | steps[1] is no object
[{"tool":"a","reason":"r"}] | steps[0] has no field "args"
[{"tool":"a","args":{}},{"tool":"b","args":{}},{"args":{}}] | steps[2] has no field "tool"
)")) {
    const JsonValue steps = tests::parse(row.at(0));
    std::string kept;
    try {
      for (const JsonValue& each : _deduplicated(*steps.list()))
        kept += (kept.empty() ? "" : " ") + (*each.object())["reason"].integer()->digits();
    } catch (const MalformedStep& error) {
      kept = error.what();
    }
    EXPECT_EQ(kept, row.at(1)) << row.at(0);
  }
  const JsonValue foreign = values::ForeignValue::of(7, "x");
  const JsonList steps = JsonList::of(step("a", "", {{"p", foreign}}), step("a", "", {{"p", "x"}}));
  EXPECT_EQ(_deduplicated(steps).size(), 1U);
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

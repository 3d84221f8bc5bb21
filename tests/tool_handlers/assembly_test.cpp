#include "vantrex/tool_handlers/next_steps/assembly.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "support/table.h"

namespace vantrex::tool_handlers::next_steps {
namespace {

using values::JsonList;
using values::JsonValue;

TEST(Deduplicated, KeepsTheFirstStepOfEachCall) {
  for (const auto& row : tests::table(R"(
# steps | the reasons of those that are kept, or which one is malformed
[{"tool":"a","args":{},"reason":0},{"tool":"a","args":{},"reason":1},{"tool":"b","args":{},"reason":2}] | 0 2
[{"tool":"a","args":{"x":1,"y":[{"p":1,"q":2}]},"reason":0},{"args":{"y":[{"q":2,"p":1}],"x":1},"tool":"a"}] | 0
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
  JsonList many;
  for (const char* tool : {"a", "b", "c", "d", "c", "b", "a"}) many.push_back(step(tool, ""));
  EXPECT_EQ(_deduplicated(std::move(many)).size(), 4U);
  const JsonValue foreign = values::ForeignValue::of(7, "x");
  const JsonList steps = JsonList::of(step("a", "", {{"p", foreign}}), step("a", "", {{"p", "x"}}));
  EXPECT_EQ(_deduplicated(steps).size(), 1U);
}

}  // namespace
}  // namespace vantrex::tool_handlers::next_steps

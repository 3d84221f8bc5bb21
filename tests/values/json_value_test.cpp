#include "vantrex/values/json_value.h"

#include <array>
#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "support/table.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::values {
namespace {

using tests::parse;

template <typename... T>
constexpr bool kNoneIsAValue = !(std::is_constructible_v<JsonValue, T> || ...);
static_assert(
    kNoneIsAValue<int*, const void*, bool*, const JsonObject*, char8_t*, void (*)(), int JsonField::*>);
static_assert(kNoneIsAValue<char, wchar_t, char32_t, Kind, std::unique_ptr<int>, std::nullopt_t>);
static_assert(kNoneIsAValue<std::map<int, int>, std::optional<char>, std::shared_ptr<int>>);

// What points into a value cannot be had of a temporary.
template <typename Value>
concept LendsText = requires(Value value) {
  std::forward<Value>(value).string();
}
|| requires(Value value) {
  std::forward<Value>(value).text();
};
template <typename Value>
concept LendsParts = requires(Value value) {
  std::forward<Value>(value).list();
}
|| requires(Value value) {
  std::forward<Value>(value).object();
}
|| requires(Value value) {
  std::forward<Value>(value).foreign();
};
static_assert(LendsText<const JsonValue&> && !LendsText<JsonValue> && !LendsText<const JsonValue>);
static_assert(LendsParts<const JsonValue&> && !LendsParts<JsonValue> && !LendsParts<const JsonValue>);

// Which accessors give something: boolean, integer, floating, string, list,
// object, foreign; and whether the value is empty.
std::string accessors(const JsonValue& value) {
  std::string given;
  if (value.is_null()) given += "null";
  if (value.boolean()) given += "b";
  if (value.integer()) given += "i" + value.integer()->digits();
  if (value.floating()) given += "f";
  if (value.string() && value.text() != nullptr) given += "s";
  if (value.list() != nullptr) given += "l";
  if (value.object() != nullptr) given += "o";
  if (value.foreign() != nullptr) given += "F";
  return given + (value.is_empty() ? " empty" : "");
}

TEST(JsonValue, GivesWhatItIsAndNothingElse) {
  const auto rows = tests::table(R"(
null | null empty
true | bi1
false | bi0 empty
0 | i0 empty
-7 | i-7
100000000000000000000 | i100000000000000000000
0.0 | f empty
-0.0 | f empty
2.5 | f
"" | s empty
"0" | s
[] | l empty
[null] | l
{} | o empty
{"a":null} | o
)");
  for (const auto& row : rows) EXPECT_EQ(accessors(parse(row.at(0))), row.at(1)) << row.at(0);
  EXPECT_EQ(accessors(std::numeric_limits<double>::quiet_NaN()), "f");
  EXPECT_EQ(accessors(ForeignValue::of(0, "")), "F");
}

TEST(JsonValue, IsMadeOfWhatHasAJsonForm) {
  const std::string text = "text";
  const std::optional<std::string> none;
  const std::pair<JsonValue, const char*> kRows[] = {
      {std::uint8_t{200}, "200"},
      {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"},
      {1.5F, "1.5"},
      {text.c_str(), "\"text\""},
      {text, "\"text\""},
      {std::string_view(text), "\"text\""},
      {TextLiteral("text"), "\"text\""},
      {none, "null"},
      {std::optional(true), "true"},
      {std::optional(Integer(3)), "3"},
      {std::vector<bool>{true, false}, "[true,false]"},
      {std::vector<std::optional<int>>{1, std::nullopt}, "[1,null]"},
      {std::array<std::vector<std::string>, 2>{{{"a"}, {}}}, R"([["a"],[]])"},
      {std::deque<double>{1, 2}, "[1.0,2.0]"},
      {std::set<std::string>{"b", "a"}, R"(["a","b"])"},
      {std::tuple(1, "two", nullptr, std::tuple<>()), R"([1,"two",null,[]])"},
      {std::map<std::string, std::vector<int>>{{"b", {}}, {"a", {1}}}, R"({"a":[1],"b":[]})"},
      {std::map<std::string_view, std::map<std::string, bool>>{{"a", {{"b", true}}}}, R"({"a":{"b":true}})"},
      {JsonList::of(JsonList::of(1), JsonObject{{"a", "b"}}, text), R"([[1],{"a":"b"},"text"])"},
      {JsonList::of(JsonList()), "[[]]"},
      {JsonObject{{"z", 1}, {"a", nullptr}, {"z", 2}}, R"({"z":2,"a":null})"},
  };
  for (const auto& [value, expected] : kRows) EXPECT_EQ(compact_text(value), expected);
}

TEST(JsonValue, ThatCannotBeMadeLeavesNothingBehind) {
  const std::string fine = "a text of more than 14 bytes";
  const std::ptrdiff_t before = tests::live_allocations();
  EXPECT_THROW(JsonValue(std::vector<std::string>{fine, "\xFF"}), InvalidUtf8);
  EXPECT_THROW(JsonValue(std::map<std::string, std::string>{{"a", fine}, {"b", "\xFF"}}), InvalidUtf8);
  EXPECT_THROW(JsonValue(std::map<std::string, int>{{"a", 1}, {"\xFF", 2}}), InvalidUtf8);
  EXPECT_THROW(JsonValue(std::tuple(fine, "\xFF")), InvalidUtf8);
  EXPECT_EQ(tests::live_allocations(), before);
}

TEST(JsonValue, EqualsWhatIsOfTheSameKindAndHoldsTheSame) {
  const JsonValue foreign = ForeignValue::of(std::string("x"), "x");
  const double nan = std::numeric_limits<double>::quiet_NaN();
  // Values of one row are equal, of different rows unequal.
  const std::vector<std::vector<JsonValue>> kRows = {
      {nullptr, std::optional<int>()},
      {true},
      {false},
      {1, Integer(1)},
      {1.0, 1.0F},
      {0.0},
      {-0.0},
      {nan, -nan},
      {parse("100000000000000000000"), *Integer::parse("0100000000000000000000")},
      {"", TextLiteral("")},
      {"x", std::string("x")},
      {"a text of more than 14 bytes", TextLiteral("a text of more than 14 bytes")},
      {foreign, JsonValue(foreign)},
      {ForeignValue::of(std::string("x"), "x")},
      {JsonList(), parse("[]")},
      {JsonObject(), parse("{}")},
      {parse(R"([[],{"a":[1]}])"), JsonList::of(JsonList(), JsonObject{{"a", JsonList::of(1)}})},
      {parse(R"([[],{"a":[1.0]}])")},
      {parse(R"([{"a":[1]},[]])")},
      {parse(R"({"a":1,"b":2})"), JsonObject{{"a", 1}, {"b", 2}}},
      {parse(R"({"b":2,"a":1})")},
      {parse(R"({"a":1,"b":2,"c":null})")},
  };
  for (const auto& a : kRows) {
    for (const auto& b : kRows) {
      for (const JsonValue& left : a) {
        for (const JsonValue& right : b) {
          EXPECT_EQ(left == right, &a == &b) << compact_text(left) << " " << compact_text(right);
        }
      }
    }
  }
}

TEST(ForeignValue, IsCarriedUnchanged) {
  auto host = std::make_shared<int>(7);
  const std::weak_ptr<int> watched = host;
  JsonValue carried = ForeignValue::of(std::move(host), "a \"seven\" \xFF");
  JsonObject answer = {{"deep", JsonList::of(carried)}};
  carried = nullptr;
  JsonObject copy = answer;
  answer = JsonObject();
  EXPECT_EQ(compact_text(copy), "{\"deep\":[\"a \\\"seven\\\" \uFFFD\"]}");
  const ForeignValue held = *(*copy["deep"].list())[0].foreign();
  copy = JsonObject();
  EXPECT_EQ(held.as<int>(), nullptr);
  EXPECT_EQ(held.as<std::shared_ptr<int>>()->get(), watched.lock().get());
  EXPECT_EQ(watched.use_count(), 1);
}

}  // namespace
}  // namespace vantrex::values

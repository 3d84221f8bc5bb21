#include "vantrex/values/json_value.h"

#include <array>
#include <filesystem>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/allocations.h"
#include "support/table.h"
#include "vantrex/values/text_forms.h"

// Types of a user.
namespace colors {
enum class Color { red, green };
struct Palette : std::vector<Color> {};

vantrex::values::JsonValue to_json_value(Color color) {
  return color == Color::red ? "red" : "green";
}
vantrex::values::JsonValue to_json_value(const Palette& palette) {
  return palette.size();
}
}  // namespace colors

namespace vantrex::values {
namespace {

using colors::Color;
using tests::parse;

template <typename... T>
constexpr bool kNoneIsAValue = !(std::is_constructible_v<JsonValue, T> || ...);
static_assert(
    kNoneIsAValue<int*, const void*, bool*, const JsonObject*, char8_t*, void (*)(), std::nullopt_t>);
static_assert(kNoneIsAValue<char, wchar_t, char32_t, Kind, std::shared_ptr<int>, std::map<int, int>>);

// A list of fields with a name must be moved, since the object moves its values.
static_assert(!std::is_constructible_v<JsonObject, std::initializer_list<JsonObject::FieldInit>&> &&
              std::is_constructible_v<JsonObject, std::initializer_list<JsonObject::FieldInit>>);

// The initials of the accessors that return something, and whether the value is empty.
std::string accessors(const JsonValue& value) {
  std::string given = value.is_null() ? "null" : "";
  if (value.boolean()) given += "b";
  if (value.integer()) given += "i" + value.integer()->digits();
  if (value.floating()) given += "f";
  if (value.string() && value.text() != nullptr) given += "s";
  if (value.list() != nullptr) given += "l";
  if (value.object() != nullptr) given += "o";
  if (value.foreign() != nullptr) given += "F";
  return given + (value.is_empty() ? " empty" : "");
}

TEST(JsonValue, AccessorsReturnTheirKind) {
  for (const auto& row : tests::table(R"(
null | null empty
true | b
false | b empty
0 | i0 empty
-7 | i-7
-0.0 | f empty
2.5 | f
"" | s empty
[] | l empty
{} | o empty
{"a":null} | o
)")) {
    EXPECT_EQ(accessors(parse(row.at(0))), row.at(1)) << row.at(0);
  }
  EXPECT_EQ(accessors(ForeignValue::of(0, "")), "F");
}

TEST(JsonValue, ConvertsFromTypesWithAJsonForm) {
  const std::pair<JsonValue, const char*> kRows[] = {
      {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"},
      {1.5F, "1.5"},
      {std::vector<bool>{true, false}, "[true,false]"},
      {std::vector<std::optional<int>>{1, std::nullopt}, "[1,null]"},
      {std::array<std::set<std::string_view>, 2>{{{"b", "a"}, {}}}, R"([["a","b"],[]])"},
      {std::tuple(1, "two", nullptr, std::tuple<>()), R"([1,"two",null,[]])"},
      {std::map<std::string, std::vector<int>>{{"b", {}}, {"a", {1}}}, R"({"a":[1],"b":[]})"},
      {std::filesystem::path("a/b"), R"("a/b")"},
      {std::vector<std::filesystem::path>{"a", "\""}, R"(["a","\""])"},
      {JsonList::of(JsonList()), "[[]]"},  // a list in a list, not a copy
      {std::map<std::string, std::pair<Color, int>>{{"a", {Color::green, 1}}}, R"({"a":["green",1]})"},
      {JsonList::of(std::optional(Color::red), colors::Palette{{{}, {}}}), R"(["red",2])"},
      {JsonObject{{"z", 1}, {"a", nullptr}, {"z", 2}}, R"({"z":2,"a":null})"},
  };
  for (const auto& [value, expected] : kRows) EXPECT_EQ(compact_text(value), expected);

  // A conversion that throws frees everything.
  const std::string fine = "a text of more than 14 bytes";
  const std::ptrdiff_t before = tests::allocations().live;
  EXPECT_THROW(JsonValue(std::vector<std::string>{fine, "\xFF"}), InvalidUtf8);
  EXPECT_THROW(JsonValue(std::map<std::string, std::string>{{"a", fine}, {"\xFF", fine}}), InvalidUtf8);
  EXPECT_THROW(JsonValue(std::tuple(fine, "\xFF")), InvalidUtf8);
  EXPECT_EQ(tests::allocations().live, before);
}

TEST(JsonValue, MovesWhatIsMoved) {
  JsonList inner = JsonList::of(1);
  const JsonValue* const item = inner.begin();
  std::vector<JsonList> lists;
  lists.push_back(std::move(inner));
  std::optional<JsonValue> outer = JsonValue(std::move(lists));
  JsonValue value = std::move(outer);
  std::map<std::string, std::tuple<JsonValue>> map;
  map.emplace("key", std::move(value));
  JsonObject a = {{"a", JsonValue(std::move(map))}};
  JsonObject b;
  swap(a, b);
  EXPECT_TRUE(a.empty() && b["a"]["key"][0][0].list()->begin() == item);
  std::unordered_set<Text> texts = {"a text of more than 14 bytes", "short"};
  EXPECT_TRUE(texts.contains(TextLiteral("a text of more than 14 bytes")) && !texts.contains(""));
}

// Compares each of `values` with `other`, and with the value of `other`.
template <typename T>
void compare_unconverted(const JsonList& values, const T& other) {
  const JsonValue converted(other);
  std::size_t equal = 0;
  for (const JsonValue& value : values) {
    const std::size_t before = tests::allocations().taken;
    const bool is_equal = value == other;
    const bool is_consistent = is_equal == (other == value) && is_equal == (value == converted);
    EXPECT_EQ(tests::allocations().taken, before) << converted;
    EXPECT_TRUE(is_consistent) << value << " " << converted;
    equal += is_equal ? 1 : 0;
  }
  EXPECT_GT(equal, 0U) << converted;
}

TEST(JsonValue, EqualsTheSameKindAndContent) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr auto kMax = std::numeric_limits<std::uint64_t>::max();
  const ForeignValue foreign = ForeignValue::of(1, "x");
  EXPECT_TRUE(foreign == JsonValue(foreign) && JsonValue(foreign) != ForeignValue::of(1, "x"));
  // Other values are equal exactly when their texts are.
  JsonValue parsed = parse(R"([
    null, true, false, 1, 1, 18446744073709551614, 18446744073709551614, 1.0, 10e-1, 0.0, -0.0, "", [], [], {}, {},
    [[], {"a": [1]}], [[], {"a": [1]}], [[], {"a": [1.0]}], {"a": 1, "b": 2}, {"a": 0, "b": 2, "a": 1},
    {"b": 2, "a": 1}, {"a": 1, "c": 2}, {"a": 1, "b": 2, "c": null}])");
  JsonList& values = *parsed.list();
  for (const JsonValue& more :
       {JsonValue(nan), {-nan}, {"more than 14 bytes"}, {TextLiteral("more than 14 bytes")}})
    values.push_back(more);
  for (const JsonValue& a : values) {
    for (const JsonValue& b : values) EXPECT_EQ(a == b, compact_text(a) == compact_text(b)) << a << " " << b;
    EXPECT_FALSE(a == std::string("more than 14 bytes\xFF"));
  }

  for (const JsonValue& more : {JsonValue(kMax), {foreign}}) values.push_back(more);
  compare_unconverted(values, nullptr);
  compare_unconverted(values, true);
  compare_unconverted(values, 1);
  compare_unconverted(values, kMax);
  compare_unconverted(values, Integer(kMax));
  compare_unconverted(values, -0.0F);
  compare_unconverted(values, nan);
  compare_unconverted(values, "more than 14 bytes");
  compare_unconverted(values, std::string("more than 14 bytes"));
  compare_unconverted(values, Text("more than 14 bytes"));
  compare_unconverted(values, foreign);
  compare_unconverted(values, JsonList::of(JsonList(), JsonObject{{"a", JsonList::of(1)}}));
  compare_unconverted(values, JsonObject{{"a", 1}, {"b", 2}});
}

TEST(ForeignValue, IsCarriedUnchanged) {
  auto object = std::make_shared<int>(7);
  const std::weak_ptr<int> watched = object;
  JsonValue answer = JsonList::of(ForeignValue::of(std::move(object), "\"7\" \xFF"));
  JsonValue copy = answer;
  answer = nullptr;
  EXPECT_EQ(compact_text(copy), "[\"\\\"7\\\" \uFFFD\"]");
  ForeignValue held = ForeignValue::of(1, "");
  held = *copy[0].foreign();
  copy = nullptr;
  EXPECT_EQ(held.as<int>(), nullptr);
  EXPECT_EQ(held.as<std::shared_ptr<int>>()->get(), watched.lock().get());
  EXPECT_EQ(watched.use_count(), 1);
}

}  // namespace
}  // namespace vantrex::values

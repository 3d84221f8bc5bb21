#include <algorithm>
#include <functional>
#include <iterator>
#include <locale>
#include <ranges>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"
#include "support/allocations.h"
#include "support/table.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::values {
namespace {

using fuzz::Random;
using fuzz::naive::json_text;

TEST(JsonObject, BehavesLikeAListOfPairs) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    Random random(seed);
    // Some objects have an index and some do not; the limit is 32 fields.
    const std::size_t keys = seed % 50 == 0 ? 1000 : 1 + random.below(60);
    const std::size_t rounds = 100 + 2 * keys;
    JsonObject object;
    std::vector<std::pair<std::string, std::size_t>> expected;
    for (std::size_t round = 0; round < rounds; ++round) {
      const std::string key = "a key of some length " + std::to_string(random.below(keys));
      auto found = std::ranges::find(expected, key, &std::pair<std::string, std::size_t>::first);
      ASSERT_EQ(object.contains(key), found != expected.end()) << "seed " << seed;
      if (random.chance(5)) object = JsonObject(object);  // a copy has no spare room
      if (random.chance(3)) object.reserve(random.below(100));
      if (random.chance(2 * round < rounds ? 25 : 60)) {
        ASSERT_EQ(object.remove(key).has_value(), found != expected.end());
        if (found != expected.end()) expected.erase(found);
      } else {
        object.set(key, round);
        if (found == expected.end()) found = expected.insert(found, {key, round});
        found->second = round;
      }
    }
    ASSERT_EQ(object.size(), expected.size());
    auto pair = expected.begin();
    for (const auto& [key, value] : object) {
      ASSERT_EQ(key, Text(pair->first)) << "seed " << seed;
      ASSERT_EQ(value, JsonValue(pair++->second)) << "seed " << seed;
      ASSERT_EQ(object.find(key.view()), &value);
    }
    object.clear();
    ASSERT_EQ(object, JsonObject());
  }
}

template <std::size_t... kNumbers>
JsonObject object_of(std::index_sequence<kNumbers...> /*numbers*/) {
  return {{std::to_string(kNumbers % 40), kNumbers}...};
}

TEST(JsonObject, IsBuiltFromManyFields) {
  const JsonObject built = object_of(std::make_index_sequence<50>());
  EXPECT_EQ(built.size(), 40U);
  EXPECT_EQ(built["9"], 49);
}

TEST(Containers, TakeTheirOwnItemsAndRejectTooMany) {
  JsonObject object = {{"a key of more than 14 bytes", JsonList::of("x")}};
  for (int round = 0; round < 4; ++round) object.set(object.begin()->key, object.begin()->value);
  object.set("whole", object);
  object.remove(object.begin()->key.view());
  EXPECT_EQ(compact_text(object), R"({"whole":{"a key of more than 14 bytes":["x"]}})");
  JsonList list = JsonList::of("a text of more than 14 bytes");
  while (list.size() < 100) list.push_back(list[0]);
  EXPECT_EQ(list[99], list[0]);
  EXPECT_THROW(list.reserve(std::size_t{1} << 32), std::length_error);
  EXPECT_THROW(object.reserve(std::size_t{1} << 32), std::length_error);
}

TEST(Containers, WorkWithAlgorithmsAndStreams) {
  static_assert(std::ranges::contiguous_range<JsonList> && std::ranges::contiguous_range<JsonObject>);
  JsonList list;
  std::ranges::copy(std::vector<int>{3, 1, 2}, std::back_inserter(list));
  const JsonObject object = {{"a", list}, {"b", 1234.5}, {"c", Integer(1234)}};
  struct Separators : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\1"; }
  };
  std::ostringstream out;
  out.imbue(std::locale(out.getloc(), new Separators));
  out << list << object << std::ranges::find(object, Text("b"), &JsonField::key)->value << Text("t")
      << Integer();
  EXPECT_EQ(out.str(), R"([3,1,2]{"a":[3,1,2],"b":1234.5,"c":1234}1234.5t0)");
  EXPECT_EQ(compact_size(list), 7U);
  EXPECT_EQ(list.item(3), nullptr);
}

TEST(Containers, FollowPaths) {
  const JsonObject answer = tests::parse_object(R"({"a": [{"b": 1}, [2, [3]]], "": {"0": 4}})");
  const JsonValue& list = answer["a"];
  EXPECT_EQ(answer["a"][0]["b"], 1);
  EXPECT_EQ(list[1U][std::int8_t{1}][std::size_t{0}], 3);
  EXPECT_EQ((*list.list())[1][0], 2);
  EXPECT_EQ(answer[std::string()][Text("0")], 4);
  for (const JsonValue* absent : {&answer["a"][2], &answer["a"][-1], &answer[""][0], &answer["b"], &list["b"],
                                  &answer["a"][0]["b"][0], &(*list.list())[~std::uint64_t{0}]})
    EXPECT_EQ(*absent, nullptr);
}

// Changes every scalar, list and object in `value`.
void change_all(JsonValue& value) {
  if (JsonList* list = value.list()) {
    for (std::size_t at = 0; at < list->size(); ++at) change_all(*list->item(at));
    list->push_back("a text of more than 14 bytes");
    list->truncate(list->size() - list->size() / 3);
  } else if (JsonObject* object = value.object()) {
    for (const auto& [key, each] : *object) change_all(*object->find(key));
    object->set("a key of more than 14 bytes", JsonList());
  } else {
    value = "changed";
  }
}

TEST(Containers, CopiesAreIndependent) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    const JsonValue original = Random(seed, fuzz::Domain::json).value(5);
    const std::string before = json_text(original);
    JsonValue copy;
    copy = original;
    if (copy.list() != nullptr) *copy.list() = *original.list();
    JsonValue other = true;
    swap(copy, other);
    swap(copy, other);
    change_all(copy);
    ASSERT_EQ(json_text(original), before) << "seed " << seed;
    JsonValue parsed = tests::parse(before);  // shares nothing with `original`
    change_all(parsed);
    ASSERT_EQ(json_text(copy), json_text(parsed)) << "seed " << seed;
  }
}

TEST(Containers, AreUnchangedWhenMemoryRunsOut) {
  const std::string key = "a key of more than 14 bytes";
  for (const int size : {15, 40}) {  // without and with an index
    JsonObject source = tests::parse_object(R"({"list": ["a text of more than 14 bytes", {}, [1, 2]]})");
    for (int field = 1; field < size; ++field) source.set(std::to_string(field), JsonObject{{"a", field}});
    const std::string before = json_text(source);
    const std::function<void(JsonObject&)> kChanges[] = {
        [&](JsonObject& object) { object.set(key, JsonList::of(key)); },
        [&](JsonObject& object) { object.set("list", Text(key)); },
        [&](JsonObject& object) { object.reserve(200); },
        [&](JsonObject& object) { object.set(key, JsonList::of(object, source)); },
    };
    for (const auto& change : kChanges) {
      JsonObject object = source;
      tests::fail_each_allocation([&] { change(object); }, [&] { ASSERT_EQ(json_text(object), before); });
    }
  }
}

}  // namespace
}  // namespace vantrex::values

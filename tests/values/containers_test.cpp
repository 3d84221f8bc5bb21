#include <algorithm>
#include <functional>
#include <iterator>
#include <optional>
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

TEST(JsonObject, KeepsItsFieldsLikeAListOfPairs) {
  for (std::uint64_t seed = 0; seed < 300; ++seed) {
    Random random(seed);
    // Up to and beyond what is searched without an index.
    const std::size_t keys = seed % 50 == 0 ? 1000 : 1 + random.below(60);
    const std::size_t rounds = 100 + 2 * keys;
    JsonObject object;
    std::vector<std::pair<std::string, std::size_t>> expected;
    for (std::size_t round = 0; round < rounds; ++round) {
      if (round == rounds / 4) {
        object.clear();
        expected.clear();
      }
      const std::string key = "a key of some length " + std::to_string(random.below(keys));
      auto found =
          std::find_if(expected.begin(), expected.end(), [&](auto& each) { return each.first == key; });
      ASSERT_EQ(object.contains(key), found != expected.end()) << "seed " << seed;
      if (random.chance(5)) object = JsonObject(object);  // has no room to spare
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
    for (std::size_t place = 0; place < expected.size(); ++place) {
      const JsonField& field = object.begin()[place];
      ASSERT_EQ(field.key.view(), expected[place].first) << "seed " << seed;
      ASSERT_EQ(field.value, JsonValue(expected[place].second)) << "seed " << seed;
      ASSERT_EQ(object.find(field.key.view()), &field.value);
    }
  }
}

TEST(Containers, TakeTheirOwnPartsAndRefuseTooMany) {
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
  const JsonObject object = {{"a", list}, {"b", list.back()}};
  std::ostringstream out;
  out << list << object << *std::ranges::find(object, Text("b"), &JsonField::key);
  EXPECT_EQ(out.str(), R"([3,1,2]{"a":[3,1,2],"b":2}"b":2)");
}

TEST(Containers, GiveWhatIsAtAPath) {
  const JsonObject answer = tests::parse_object(R"({"a": [{"b": 1}, [2, [3]]], "": {"0": 4}})");
  const JsonValue& list = answer["a"];
  EXPECT_EQ(answer.at_path("a", 0, "b"), 1);
  EXPECT_EQ(list.at_path(1U, std::int8_t{1}, std::size_t{0}), 3);
  EXPECT_EQ(list.list()->at_path(1, 0), 2);
  EXPECT_EQ(answer.at_path(std::string(), Text("0")), 4);
  for (const JsonValue* nothing :
       {&answer.at_path("a", 2), &answer.at_path("a", -1), &answer.at_path("", 0), &answer.at_path(0),
        &list.at_path("b"), &answer.at_path("a", 0, "b", 0), &list.at_path(std::uint64_t{1} << 63)})
    EXPECT_EQ(*nothing, nullptr);
}

// A place somewhere in `value`, to be changed.
JsonValue& some_place(JsonValue& value, Random& random) {
  JsonValue* place = &value;
  while (random.chance(75)) {
    JsonList* list = place->list();
    JsonObject* object = place->object();
    if (list != nullptr && !list->empty()) {
      place = &list->mutable_item(random.below(list->size()));
    } else if (object != nullptr && !object->empty()) {
      const std::string key(object->begin()[random.below(object->size())].key.view());
      place = object->find_mutable(key);
    }
  }
  return *place;
}

// Makes one change somewhere in `value`; returns what was taken out of it.
JsonValue change(JsonValue& value, Random random) {
  JsonValue& place = some_place(value, random);
  const std::size_t way = random.below(4);
  if (way == 0) return std::exchange(place, random.value(2));
  if (JsonList* list = place.list()) {
    if (way == 1) list->truncate(random.below(list->size() + 1));
    if (way == 2) list->reserve(random.below(20));
    if (way == 3) list->push_back(random.value(2));
  } else if (JsonObject* object = place.object()) {
    if (way == 1 && !object->empty()) return *object->remove((object->end() - 1)->key.view());
    if (way == 2) object->reserve(random.below(20));
    if (way == 3) object->set(random.text(), random.value(2));
  }
  return nullptr;
}

TEST(Containers, CopiesChangeAlone) {
  for (std::uint64_t seed = 0; seed < 2000; ++seed) {
    const JsonValue original = Random(seed, fuzz::Domain::json).value(5);
    const std::string before = json_text(original);
    JsonValue copy = original;
    JsonValue expected = tests::parse(before);  // shares nothing
    for (int round = 0; round < 12; ++round) {
      const Random choices(seed * 100 + static_cast<std::uint64_t>(round));
      ASSERT_EQ(json_text(change(copy, choices)), json_text(change(expected, choices))) << "seed " << seed;
      ASSERT_EQ(compact_text(copy), json_text(expected)) << "seed " << seed;
    }
    ASSERT_EQ(json_text(original), before) << "seed " << seed;
  }
}

TEST(Containers, AreAsTheyWereWhenMemoryRunsOut) {
  const JsonObject source = tests::parse_object(
      R"({"a text of more than 14 bytes":1,"list":["another text of more than 14 bytes",{},[1,2]],"object":{"a":{}},)"
      R"("5":5,"6":6,"7":7,"8":8,"9":9,"10":10,"11":11,"12":12,"13":13,"14":14,"15":15,"16":16})");
  const std::string before = json_text(source);
  const std::string key = "a new key of more than 14 bytes";
  const std::vector<std::function<void(JsonObject&)>> kChanges = {
      [&](JsonObject& o) { o.set(key, JsonList::of(key)); },
      [&](JsonObject& o) { o.set("list", Text(key)); },
      [&](JsonObject& o) { o.reserve(200); },
      [&](JsonObject& o) { o.set("copies", JsonList::of(o, source)); },
      [&](JsonObject& o) {
        JsonObject many{{key, o}, {key + "2", JsonList::of(key)}};
        for (int each = 0; each < 40; ++each) many.set(std::to_string(each), key);
        o = many;
      },
  };
  for (std::size_t place = 0; place < kChanges.size(); ++place) {
    JsonObject object = source;
    tests::fail_each_allocation([&] { kChanges[place](object); },
                                [&] { ASSERT_EQ(json_text(object), before) << place; });
  }
}

}  // namespace
}  // namespace vantrex::values

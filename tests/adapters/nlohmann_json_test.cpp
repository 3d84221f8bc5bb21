#include "vantrex/adapters/nlohmann_json.h"

#include <cstdint>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/allocations.h"
#include "support/small_stack.h"
#include "support/table.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::adapters {
namespace {

using nlohmann::ordered_json;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

// The message of NotConvertible, or "" when nothing is thrown.
template <typename Operation>
std::string refusal(const Operation& operation) {
  try {
    operation();
    return "";
  } catch (const NotConvertible& error) {
    EXPECT_NE(std::string(error.what()).find(error.path()), std::string::npos);
    return error.what();
  }
}

// Whether every integer of a random value with the compact text `text` fits in 64 bits.
bool fits(const std::string& text) {
  return text.find("-9223372036854775809") == std::string::npos &&
         text.find("-1234567890123456789012") == std::string::npos;
}

TEST(NlohmannJson, ConvertsThereAndBackOrRefuses) {
  for (std::uint64_t seed = 0; seed < 4000; ++seed) {
    // Every other value may hold what JSON text cannot.
    const auto domain = seed % 2 == 0 ? fuzz::Domain::json : fuzz::Domain::any;
    const JsonValue value = fuzz::Random(seed, domain).value(5);
    const std::string text = compact_text(value);
    std::string back;
    const std::string refused = refusal([&] { back = compact_text(from_nlohmann(to_nlohmann(value))); });
    EXPECT_EQ(refused.empty(), fits(text)) << text;
    EXPECT_EQ(back, fits(text) ? text : "");
    if (domain == fuzz::Domain::any || !fits(text)) continue;
    EXPECT_EQ(to_nlohmann(value).dump(), ordered_json::parse(text).dump());
    EXPECT_EQ(to_nlohmann<nlohmann::json>(value).dump(), nlohmann::json::parse(text).dump());
  }
}

TEST(NlohmannJson, NamesThePathOfARefusedValue) {
  ordered_json repeated = {{"a", 1}, {"b", 2}};
  repeated.get_ref<ordered_json::object_t&>().emplace_back("a", 3);
  EXPECT_EQ(compact_text(from_nlohmann(repeated)), R"({"a":3,"b":2})");

  const ordered_json binary = ordered_json::binary({1});
  const ordered_json discarded = ordered_json::value_t::discarded;
  const std::pair<ordered_json, std::string> kRefused[] = {
      {binary, ": binary data has no JSON form"},
      {{{"a", {nullptr, discarded}}}, " at /a/1: a value that the parser discarded has no JSON form"},
      {{{"a", "b\xff"}}, " at /a: the text is no well-formed UTF-8 at byte 1"},
      {{{"a", {{"\xff", {1}}}}}, " at /a/\uFFFD: the key is no well-formed UTF-8 at byte 0"},
  };
  for (const auto& [json, why] : kRefused)
    EXPECT_EQ(refusal([&json = json] { from_nlohmann(json); }), "the value" + why);

  const JsonValue huge = *values::Integer::parse("18446744073709551616");
  const JsonList inner = JsonList::of(JsonObject{{"a/b~", JsonList::of(1, JsonObject{{"c", huge}})}});
  const std::string misfit = "the integer 18446744073709551616 does not fit in 64 bits";
  EXPECT_EQ(to_nlohmann(*values::Integer::parse("18446744073709551615")), UINT64_MAX);
  EXPECT_EQ(refusal([&] { to_nlohmann(huge); }), "the value: " + misfit);
  EXPECT_EQ(refusal([&] { to_nlohmann(inner); }), "the value at /0/a~1b~0/1/c: " + misfit);

  const auto refused = [](const ordered_json& answer, const FinishOptions& options) {
    return refusal([&] { finish_answer(answer, "files", options); });
  };
  EXPECT_EQ(refused({{"a", binary}}, {}), "the answer at /a: binary data has no JSON form");
  EXPECT_EQ(refused({{"a", 1}}, {.arguments = &binary}),
            "the request's arguments: must be an object, not of type binary");
  EXPECT_EQ(refused({{"a", 1}}, {.freshness = huge}), "the finished answer at /freshness: " + misfit);
}

TEST(NlohmannJson, FinishesInOneLine) {
  for (std::uint64_t seed = 0; seed < 500; ++seed) {
    const fuzz::Request request = fuzz::Random(seed, fuzz::Domain::json).request();
    const JsonObject arguments = request.arguments.value_or(JsonObject());
    const JsonObject finished =
        tool_handlers::next_steps::finish_answer(request.answer, request.tool, request.options());
    if (!fits(compact_text(JsonList::of(finished, request.answer, arguments)))) continue;
    const ordered_json asked = to_nlohmann(arguments);
    EXPECT_EQ(
        from_nlohmann(finish_answer(to_nlohmann(request.answer), request.tool,
                                    {request.action, &asked, request.freshness, request.options().serves})),
        JsonValue(finished));
  }
}

TEST(NlohmannJson, NeedsLittleStackForAMillionLevels) {
  tests::on_a_small_stack([] {
    const JsonValue deep = tests::deep_value(1);
    EXPECT_EQ(from_nlohmann(to_nlohmann(deep)), deep);
  });
}

TEST(NlohmannJson, LeaksNothingWhenMemoryRunsOut) {
  const JsonValue value =
      tests::parse(R"([{"a long key of the outer":[1,"a text beyond its inline room"]},[[2]]])");
  const ordered_json json = to_nlohmann(value);
  tests::fail_each_allocation([&] { from_nlohmann(json); }, [] {});
  // nlohmann's destructors allocate, so only a single allocation fails.
  ordered_json made;
  tests::fail_each_allocation([&] { made = to_nlohmann(value); }, [] {}, true);
}

}  // namespace
}  // namespace vantrex::adapters

#include "vantrex/values/text.h"

#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"
#include "support/allocations.h"
#include "support/table.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/values/utf8.h"

namespace vantrex::values {
namespace {

using namespace std::string_literals;

TEST(Text, IsWellFormedUtf8) {
  const std::string u = "\uFFFD";
  const struct {
    std::string bytes;
    std::optional<std::size_t> ill_formed;  // the offset of the first ill-formed byte
    std::string repaired;
  } kRows[] = {
      {"a\0b\x7f"s, {}, "a\0b\x7f"s},
      {"15 bytes are it", {}, "15 bytes are it"},
      {"\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xEF\xBF\xBF \xF0\x90\x80\x80 "
       "\xF4\x8F\xBF\xBF",
       {},
       "\u0080 \u07FF \u0800 \uD7FF \uE000 \uFFFF \U00010000 \U0010FFFF"},
      {"ab\xC0\x80", 2, "ab" + u + u},
      {"\xE0\x9F\xBF", 0, u + u + u},
      {"\xED\xA0\x80", 0, u + u + u},
      {"\xF0\x8F\xBF\xBF", 0, u + u + u + u},
      {"\xF4\x90\x80\x80", 0, u + u + u + u},
      {"\xF5\xFF\xC1\xBF", 0, u + u + u + u},
      {"\xC3\x7F\xC3\xC0\xE1\xBF\x7F\xF1\xBF\xBF\xC0", 0, u + "\x7F" + u + u + u + "\x7F" + u + u},
      // What begins a sequence is replaced together, what follows it stays.
      {"12345678\xE2\x82", 8, "12345678" + u},
      {"\xC3\"\xE2\x82\xE2\x82\xAC", 0, u + "\"" + u + "€"},
      {"€\xF1\x80\x80\xC3\xA9", 3, "€" + u + "é"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(testing::PrintToString(row.bytes));
    EXPECT_EQ(Text::lossy(row.bytes), Text(row.repaired));
    EXPECT_EQ(scan_utf8(row.bytes).well_formed, row.ill_formed.value_or(row.bytes.size()));
    for (std::size_t size = 0; size < row.bytes.size(); ++size) {
      // What lies behind the end is not looked at.
      const std::string alone = row.bytes.substr(0, size);
      EXPECT_EQ(Text::lossy(std::string_view(row.bytes).substr(0, size)), Text::lossy(alone));
    }
    try {
      const Text text(row.bytes);
      EXPECT_EQ(text.view(), row.bytes);
      EXPECT_FALSE(row.ill_formed);
    } catch (const InvalidUtf8& error) {
      EXPECT_EQ(error.byte_offset(), row.ill_formed);
      EXPECT_NE(std::string(error.what()).find("byte " + std::to_string(error.byte_offset())),
                std::string::npos);
    }
  }
  EXPECT_EQ(utf8_sequence_length(""), 0U);
  EXPECT_THROW(Text(static_cast<const char*>(nullptr)), std::invalid_argument);
}

TEST(Text, ComparesByBytesHoweverItIsHeld) {
  const Text texts[] = {
      Text(),   "a",         TextLiteral("literal\nof more than 14"), "long text of more than 14", "é",
      "\uFFFF", "\U00010000"};
  for (const Text& a : texts) {
    for (const Text& b : texts) EXPECT_EQ(a <=> b, &a <=> &b) << a.view() << " " << b.view();
    EXPECT_EQ(a.size() + a.escape_gain() + 2, fuzz::naive::json_text(a).size()) << a.view();
  }
  for (char letter = 1; letter < 127; ++letter) {
    const Text text = std::string("1234567") + letter;
    EXPECT_EQ(text.size() + text.escape_gain() + 2, fuzz::naive::json_text(text).size()) << text.view();
  }
  EXPECT_EQ(texts[2], Text("literal\nof more than 14"));
  EXPECT_EQ(Text(TextLiteral("short")), Text(std::string("short")));
}

TEST(TextArgument, TakesEveryKindOfText) {
  const std::string bytes = "größe";
  const std::string_view view = bytes;
  const char* pointer = bytes.c_str();
  char array[] = "größe";
  const TextArgument kEqual[] = {"größe", bytes, view, pointer, array, Text(bytes), TextLiteral("größe")};
  for (const TextArgument& argument : kEqual) EXPECT_EQ(argument.text(), Text(bytes));
  const JsonObject object{
      {"größe", 1}, {bytes + " of more than 14 bytes", 2}, {"größe of more than 14 bytes", 3}};
  EXPECT_EQ(compact_text(object), R"({"größe":1,"größe of more than 14 bytes":3})");
  EXPECT_THROW(TextArgument(std::string("\xFF")).text(), InvalidUtf8);
  EXPECT_EQ(TextArgument(std::string("\xFF")).lossy_text(), Text("\uFFFD"));
  EXPECT_THROW(TextArgument(static_cast<const char*>(nullptr)), std::invalid_argument);
}

TEST(TextForms, EqualTheNaiveWriting) {
  for (std::uint64_t seed = 0; seed < 5000; ++seed) {
    const JsonValue value = fuzz::Random(seed).value(6);
    const std::string text = fuzz::naive::json_text(value);
    ASSERT_EQ(compact_text(value), text) << "seed " << seed;
    const std::size_t allocations = tests::allocations().taken;
    const std::size_t size = compact_size(value);
    ASSERT_EQ(tests::allocations().taken, allocations) << "measuring took memory";
    ASSERT_EQ(size, text.size()) << text;
    ASSERT_EQ(canonical_text(value), fuzz::naive::json_text(value, true)) << text;
    const JsonValue copy = value;
    ASSERT_EQ(copy, value) << text;
    ASSERT_EQ(fuzz::naive::json_text(copy), text);
  }
  const JsonValue value = tests::parse(R"({"b":[{"z":1,"":2}],"a":{},"é":0,"B":1,"𝄞":3,"\uffff":4,"a\n":5})");
  EXPECT_EQ(canonical_text(value),
            "{\"B\":1,\"a\":{},\"a\\n\":5,\"b\":[{\"\":2,\"z\":1}],\"é\":0,\"\uFFFF\":4,\"𝄞\":3}");
}

}  // namespace
}  // namespace vantrex::values

#include "vantrex/values/text.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"
#include "support/allocations.h"
#include "support/table.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::values {
namespace {

std::size_t accepted_bytes(std::string_view bytes) {
  try {
    EXPECT_EQ(Text(bytes), Text::lossy(bytes));
    return bytes.size();
  } catch (const InvalidUtf8& error) {
    EXPECT_NE(std::string(error.what()).find("byte " + std::to_string(error.byte_offset())),
              std::string::npos);
    return error.byte_offset();
  }
}

// Compares Text with another library's reading, at offsets within a machine word.
void check_utf8(const std::string& bytes) {
  for (const std::size_t before : {0U, 6U, 13U}) {
    const std::string text = std::string(before, 'x') + bytes;
    const std::string more = text + '\x80';  // what lies behind the end is not looked at
    const std::string_view view = std::string_view(more).substr(0, text.size());
    const std::string repaired =
        nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    const std::size_t first = repaired.find("\uFFFD");
    ASSERT_EQ(accepted_bytes(view), first == std::string::npos ? text.size() : first - 1) << repaired;
    ASSERT_EQ(compact_text(Text::lossy(view)), repaired) << testing::PrintToString(view);
  }
}

// Checks all that follows `bytes`, up to four bytes, with each byte at a boundary.
void check_continued(const std::string& bytes) {
  check_utf8(bytes);
  if (bytes.size() == 4 || testing::Test::HasFailure()) return;
  for (const char next : {'\x7F', '\x80', '\x8F', '\x90', '\x9F', '\xA0', '\xBF', '\xC0'})
    check_continued(bytes + next);
}

TEST(Text, IsWellFormedUtf8) {
  for (int first = 0x7F; first <= 0xFF; ++first) check_continued({static_cast<char>(first)});
  for (const char* bytes : {"", "€\xF1\x80\x80\xC3\xA9", "\xC3\"\xE2\x82\xE2\x82\xAC"}) check_utf8(bytes);
  EXPECT_THROW(Text(static_cast<const char*>(nullptr)), std::invalid_argument);
}

TEST(Text, KnowsItsEscapesAtEveryOffset) {
  constexpr std::string_view kBytes("\0\a\b\t\n\v\f\r\x0E\x1F !\"#[\\]\x7F", 18);
  constexpr std::size_t kMaxSize = 40;
  for (std::size_t size = 0; size <= kMaxSize; ++size) {
    for (std::size_t offset = 0; offset <= size; ++offset) {
      for (std::size_t kind = 0; kind < kBytes.size(); ++kind) {
        for (const std::size_t end : {std::min(offset + 1, size), size}) {
          std::string bytes(size, 'x');
          for (std::size_t at = offset; at < end; ++at) bytes[at] = kBytes[(kind + at) % kBytes.size()];
          const std::string expected = fuzz::naive::json_text(Text(bytes));
          ASSERT_EQ(compact_text(Text(bytes)), expected);
          ASSERT_EQ(size + Text(bytes).escape_gain() + 2, expected.size()) << expected;
        }
      }
    }
  }
}

TEST(Text, ComparesByBytesHoweverItIsHeld) {
  const Text texts[] = {
      Text(),   "a",         TextLiteral("literal\nof more than 14"), "long text of more than 14", "é",
      "\uFFFF", "\U00010000"};
  for (const Text& a : texts) {
    for (const Text& b : texts) EXPECT_EQ(a <=> b, &a <=> &b) << a.view() << " " << b.view();
  }
  EXPECT_EQ(texts[2], Text("literal\nof more than 14"));
}

// A gain that does not fit in a byte of the text lies with its characters.
TEST(Text, KnowsAGainOfAnySize) {
  for (const std::size_t quotes : {14U, 254U, 255U, 256U, 100'000U}) {
    const Text text(std::string(quotes, '"'));
    EXPECT_EQ(text.escape_gain(), quotes);
    EXPECT_EQ(compact_text(Text(text)).size(), 2 * quotes + 2);
  }
}

TEST(TextArgument, TakesEveryKindOfText) {
  const std::string bytes = "größe";
  const std::string_view view = bytes;
  const char* pointer = bytes.c_str();
  char array[] = "größe";
  const Text text = bytes;
  const TextArgument kEqual[] = {"größe", bytes, view, pointer, array, text, TextLiteral("größe")};
  for (const TextArgument& argument : kEqual) EXPECT_EQ(argument.text(), text);
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
    ASSERT_EQ(fuzz::naive::json_text(JsonValue(value)), text);
  }
}

}  // namespace
}  // namespace vantrex::values

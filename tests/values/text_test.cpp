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

// The number of well-formed bytes at the start.
std::size_t accepted_bytes(std::string_view bytes) {
  try {
    EXPECT_EQ(Text(bytes), Text::lossy(bytes));
    return bytes.size();
  } catch (const InvalidUtf8& error) {
    EXPECT_TRUE(std::string_view(error.what()).ends_with(" " + std::to_string(error.byte_offset())));
    return error.byte_offset();
  }
}

// Compares Text with another library, at several offsets within a machine word.
void check_utf8(const std::string& bytes) {
  for (const std::size_t before : {0U, 6U, 13U}) {
    const std::string text = std::string(before, 'x') + bytes;
    const std::string more = text + '\x80';  // bytes behind the end are not read
    const std::string_view view = std::string_view(more).substr(0, text.size());
    const std::string repaired =
        nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    const std::size_t first = repaired.find("\uFFFD");
    ASSERT_EQ(accepted_bytes(view), first == std::string::npos ? text.size() : first - 1) << repaired;
    ASSERT_EQ(compact_text(Text::lossy(view)), repaired) << testing::PrintToString(view);
  }
}

// Checks `bytes` and its continuations to up to four bytes, with bytes at the boundaries of ranges.
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

TEST(Text, EscapesAndMeasuresAtEveryOffset) {
  constexpr std::string_view kBytes("\0\a\b\t\n\v\f\r\x0E\x1F !\"#[\\]\x7F", 18);
  constexpr std::size_t kSizes[] = {0,  1,  2,  3,  4,  5,  7,  8,  9,  14, 15,
                                    16, 17, 23, 24, 25, 31, 32, 33, 40, 300};
  for (const std::size_t size : kSizes) {
    for (std::size_t offset = 0; offset <= size; ++offset) {
      for (std::size_t kind = 0; kind < 2 * kBytes.size(); ++kind) {
        std::string bytes(size, 'x');
        const std::size_t end = kind % 2 == 0 ? std::min(offset + 1, size) : size;
        for (std::size_t at = offset; at < end; ++at) bytes[at] = kBytes[(kind / 2 + at) % kBytes.size()];
        const std::string expected = fuzz::naive::json_text(Text(bytes));
        ASSERT_EQ(compact_text(Text(bytes)), expected);
        ASSERT_EQ(compact_size(Text(bytes)), expected.size()) << expected;
      }
    }
  }
}

TEST(Text, ComparesBytes) {
  const Text texts[] = {"",  "letters a", "letters b", TextLiteral("literal over 14"), "text of over 14",
                        "é", "\uFFFF",    "\U00010000"};
  for (const Text& a : texts) {
    for (const Text& b : texts) {
      EXPECT_TRUE((a <=> b) == (&a <=> &b) && (a == b) == (&a == &b)) << a.view() << " " << b.view();
      EXPECT_TRUE((a <=> b.view()) == (a <=> b) && (b.view() == a) == (a == b)) << a.view();
    }
    EXPECT_FALSE(a == std::string("letters \xFF") || "letters \xFF" == a);
  }
  EXPECT_EQ(texts[3], Text("literal over 14"));
}

TEST(TextArgument, TakesEveryKindOfString) {
  const std::string bytes = "größe";
  char array[] = "größe";
  const Text text = bytes;
  const TextArgument kEqual[] = {"größe", bytes, std::string_view(bytes), bytes.c_str(),
                                 array,   text,  TextLiteral("größe")};
  for (const TextArgument& argument : kEqual) EXPECT_EQ(argument.text(), text);
  const JsonObject object{{bytes + " of more than 14 bytes", 2}, {"größe of more than 14 bytes", 3}};
  EXPECT_EQ(compact_text(object), R"({"größe of more than 14 bytes":3})");
  EXPECT_THROW(TextArgument(std::string("\xFF")).text(), InvalidUtf8);
  EXPECT_EQ(TextArgument(std::string("\xFF")).lossy_text(), Text("\uFFFD"));
  EXPECT_THROW(TextArgument(static_cast<const char*>(nullptr)), std::invalid_argument);

  struct {
    char whole[3];
    char next[4];
  } bounded = {{'a', 'b', 'c'}, "def"};
  const char(&same)[3] = bounded.whole;
  EXPECT_TRUE(Text(bounded.whole) == "abc" && Text("abc") == same);
  EXPECT_TRUE(JsonValue(same) == "abc" && JsonValue("abc") == bounded.whole);
  EXPECT_EQ(compact_text(JsonObject{{bounded.whole, same}}), R"({"abc":"abc"})");

  const std::string_view huge("", std::size_t{1} << 32);  // is rejected unread
  EXPECT_THROW(Text{huge}, std::length_error);
  EXPECT_THROW(Text::lossy(huge), std::length_error);
  EXPECT_THROW(TextArgument{huge}, std::length_error);
}

// Long texts are written in parts of 8 KiB, which may end at any byte.
TEST(TextForms, AreWrittenInParts) {
  const JsonValue parts[] = {"plain", "\"\\\n\x01", *Integer::parse(std::string(20'000, '7')),
                             std::string(10'000, '\x01'), std::string(20'000, 'x')};
  for (const JsonValue& part : parts) {
    const JsonValue end = JsonList::of(JsonList(), JsonObject{{"key", JsonList::of(1.5, part)}, {"", -12}});
    for (std::size_t size = 8'000; size < 8'220; ++size) {
      for (const JsonValue& value : {end, JsonValue(JsonObject{{"fqn", part}, {"end", JsonList::of(end)}})}) {
        const JsonList list = JsonList::of(std::string(size, 'x'), value);
        ASSERT_EQ(compact_text(list), fuzz::naive::json_text(list)) << size;
      }
    }
  }
}

TEST(TextForms, AreMeasuredWithoutAllocating) {
  for (std::uint64_t seed = 0; seed < 1000; ++seed) {
    const JsonValue value = fuzz::Random(seed).value(6);
    const std::size_t before = tests::allocations().taken;
    const std::size_t size = compact_size(value);
    ASSERT_EQ(tests::allocations().taken, before) << "seed " << seed;
    ASSERT_EQ(size, compact_text(value).size()) << "seed " << seed;
  }
}

}  // namespace
}  // namespace vantrex::values

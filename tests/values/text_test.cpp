#include "vantrex/values/text.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"
#include "support/allocations.h"
#include "support/table.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::values {
namespace {

// The bytes of the character at the start of `bytes`, by the arithmetic of code
// points, or 0.
std::size_t character_size(std::string_view bytes) {
  const auto lead = static_cast<unsigned char>(bytes[0]);
  const auto size = static_cast<std::size_t>(lead < 0x80 ? 1 : std::countl_one(lead));
  if ((size == 1 && lead >= 0x80) || size > 4 || size > bytes.size()) return 0;
  std::uint32_t code_point = lead & (0xFFU >> size);
  for (const char byte : bytes.substr(1, size - 1)) {
    if ((byte & 0xC0) != 0x80) return 0;
    code_point = code_point << 6 | (static_cast<unsigned char>(byte) & 0x3FU);
  }
  constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool is_surrogate = 0xD800 <= code_point && code_point <= 0xDFFF;
  return kLeast[size] <= code_point && code_point <= 0x10FFFF && !is_surrogate ? size : 0;
}

// The bytes to replace together where no character starts: as many as begin one.
std::size_t ill_formed_size(std::string_view bytes) {
  for (std::size_t size = std::min<std::size_t>(3, bytes.size()); size > 1; --size) {
    for (const char more : {'\x80', '\xBF'}) {
      if (character_size(std::string(bytes.substr(0, size)) + std::string(3, more)) > size) return size;
    }
  }
  return 1;
}

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

void check_utf8(const std::string& bytes) {
  std::optional<std::size_t> accepted;
  std::string repaired;
  for (std::string_view left = bytes; !left.empty();) {
    const std::size_t size = character_size(left);
    if (size == 0 && !accepted) accepted = bytes.size() - left.size();
    repaired += size == 0 ? "\uFFFD" : left.substr(0, size);
    left.remove_prefix(size == 0 ? ill_formed_size(left) : size);
  }
  for (const std::size_t before : {0U, 6U, 13U}) {
    const std::string plain(before, 'x');
    const std::string more = plain + bytes + '\x80';  // what lies behind the end is not looked at
    const std::string_view view = std::string_view(more).substr(0, before + bytes.size());
    ASSERT_EQ(accepted_bytes(view), before + accepted.value_or(bytes.size())) << testing::PrintToString(view);
    ASSERT_EQ(Text::lossy(view), Text(plain + repaired)) << testing::PrintToString(view);
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
  EXPECT_EQ(Text::lossy("€\xF1\x80\x80\xC3\xA9"), Text("€\uFFFDé"));
  EXPECT_THROW(Text(static_cast<const char*>(nullptr)), std::invalid_argument);
}

TEST(Text, KnowsItsEscapesAtEveryOffset) {
  constexpr std::string_view kBytes("\0\a\b\t\n\v\f\r\x0E\x1F !\"#[\\]\x7F", 18);
  constexpr std::size_t kMaxSize = 40;
  for (std::size_t size = 0; size <= kMaxSize; ++size) {
    for (std::size_t offset = 0; offset <= size; ++offset) {
      for (std::size_t kind = 0; kind < kBytes.size(); ++kind) {
        for (const std::size_t count : {std::min<std::size_t>(1, size - offset), size - offset}) {
          std::string bytes(size, 'x');
          for (std::size_t each = 0; each < count; ++each)
            bytes[offset + each] = kBytes[(kind + each) % kBytes.size()];
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
    EXPECT_EQ(a.size() + a.escape_gain() + 2, fuzz::naive::json_text(a).size()) << a.view();
  }
  EXPECT_EQ(texts[2], Text("literal\nof more than 14"));
  EXPECT_EQ(Text(TextLiteral("short")), Text(std::string("short")));
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

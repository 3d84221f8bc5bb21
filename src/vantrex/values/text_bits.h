// The 16 bytes of a text, and the tag that those of every value begin with.
//
// Internal: code outside this folder uses Text, TextLiteral and TextArgument.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "vantrex/values/escapes.h"
#include "vantrex/values/utf8.h"

namespace vantrex::values::detail {

// How the 16 bytes of a Text or a JsonValue are to be read. The order matters:
// what owns memory stands together, and so do the texts.
enum class Tag : std::uint8_t {
  null,
  boolean,
  integer,
  floating,
  list,  // from here to shared_text: may own memory
  object,
  foreign,
  big_integer,  // digits, held like a shared text
  shared_text,
  literal_text,
  inline_text,  // plus the size: 0 to kInlineCapacity
};

inline constexpr std::size_t kInlineCapacity = 14;
// The gain of a shared text that is too large for its byte; the gain lies with
// the characters then.
inline constexpr std::uint8_t kLargeGain = 0xFF;

// The tag of a text of `size` bytes that lies inside the object. Every text
// that is short enough does.
constexpr Tag inline_tag(std::size_t size) noexcept {
  return static_cast<Tag>(static_cast<std::size_t>(Tag::inline_text) + size);
}

constexpr bool may_own(Tag tag) noexcept {
  return tag >= Tag::list && tag <= Tag::shared_text;
}

constexpr bool is_text(Tag tag) noexcept {
  return tag >= Tag::shared_text;
}

// A text inside the object; the characters behind it are 0.
struct InlineText {
  Tag tag;
  std::uint8_t escape_gain;
  char characters[kInlineCapacity];
};

// What stands before the pointer of an outline text, a list or an object.
struct Head {
  Tag tag;
  std::uint8_t escape_gain;  // of a text
  std::uint16_t unused;
  std::uint32_t size;
};

// A text elsewhere: a literal, or shared characters.
struct OutlineText {
  Head head;
  const char* characters;
};

// The 16 bytes of a text, which own nothing.
union TextBits {
  InlineText in;
  OutlineText out;

  // Both begin with these two.
  constexpr Tag tag() const noexcept { return in.tag; }
  constexpr std::uint8_t escape_gain() const noexcept { return in.escape_gain; }
  constexpr bool is_inline() const noexcept { return tag() >= Tag::inline_text; }
  constexpr std::size_t size() const noexcept {
    return is_inline() ? static_cast<std::size_t>(tag()) - static_cast<std::size_t>(Tag::inline_text)
                       : out.head.size;
  }
  constexpr std::string_view view() const noexcept {
    return {is_inline() ? in.characters : out.characters, size()};
  }
};
static_assert(sizeof(TextBits) == 16);

// Whether two texts inside their objects are equal.
inline bool same_bits(const TextBits& a, const TextBits& b) noexcept {
  std::uint64_t words[4];
  std::memcpy(words, &a, sizeof a);
  std::memcpy(words + 2, &b, sizeof b);
  return words[0] == words[2] && words[1] == words[3];
}

inline constexpr TextBits kEmptyText{.in = {Tag::inline_text, 0, {}}};

// The bits of a string literal, checked by the compiler.
template <std::size_t kSize>
consteval TextBits literal_bits(const char (&literal)[kSize]) {
  if (literal[kSize - 1] != 0) throw "no string literal";
  const std::string_view text(literal, kSize - 1);
  std::size_t gain = 0;
  for (std::size_t at = 0; at < text.size();) {
    const Utf8Prefix character = utf8_prefix(text.substr(at));
    if (!character.is_complete) throw "not well-formed UTF-8";
    if (text[at] == 0) throw "a NUL before the end";
    gain += escape_gain(text[at]);
    at += character.length;
  }
  if (gain >= kLargeGain) throw "too many characters to escape";
  const auto small_gain = static_cast<std::uint8_t>(gain);
  if (text.size() > kInlineCapacity) {
    return {.out = {{Tag::literal_text, small_gain, 0, static_cast<std::uint32_t>(text.size())}, literal}};
  }
  TextBits bits{.in = {inline_tag(text.size()), small_gain, {}}};
  std::copy_n(literal, text.size(), bits.in.characters);
  return bits;
}

}  // namespace vantrex::values::detail

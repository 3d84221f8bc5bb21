// The layout of a text's 16 bytes, the tag at the start of every value, and what a text's bytes mean: UTF-8
// and the escapes of JSON strings.
//
// Internal: other folders use Text, TextLiteral and TextArgument.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

namespace vantrex::values {

/// The first character of a byte sequence, or the ill-formed piece in its place. Overlong forms, surrogates
/// and code points above U+10FFFF are ill-formed.
struct Utf8Prefix {
  std::size_t length;  ///< In bytes, at least 1.
  bool is_complete;    ///< Whether the bytes are a whole character.
};

/// The first character of `bytes`, which must not be empty, or the ill-formed piece in its place.
constexpr Utf8Prefix utf8_prefix(std::string_view bytes) noexcept {
  const auto byte_at = [bytes](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  const unsigned lead = byte_at(0);
  if (lead < 0x80) return {1, true};
  if (lead < 0xC2 || lead > 0xF4) return {1, false};
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  // The range of the second byte excludes overlong forms, surrogates and code points above U+10FFFF.
  unsigned low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  for (std::size_t at = 1; at < length; ++at) {
    if (at == bytes.size() || byte_at(at) < low || byte_at(at) > high) return {at, false};
    low = 0x80;
    high = 0xBF;
  }
  return {length, true};
}

namespace detail {

/// The longest text of one byte inside a JSON string, in bytes.
inline constexpr std::size_t kMaxEscapeBytes = 6;

/// The text of one byte inside a JSON string.
struct Escape {
  char bytes[kMaxEscapeBytes + 1];
  std::uint8_t size;
};
// Indexed by the byte.
inline constexpr std::array<Escape, 256> kEscapes = [] {
  constexpr std::string_view kShort = "\"\\\b\f\n\r\t";
  constexpr std::string_view kLetters = "\"\\bfnrt";  // of the two-character escapes of these
  constexpr std::string_view kHexDigits = "0123456789abcdef";
  std::array<Escape, 256> escapes{};
  for (std::size_t value = 0; value < escapes.size(); ++value) {
    const char byte = static_cast<char>(value);
    if (const std::size_t place = kShort.find(byte); place != std::string_view::npos) {
      escapes[value] = {{'\\', kLetters[place]}, 2};
    } else if (value < 0x20) {
      escapes[value] = {{'\\', 'u', '0', '0', kHexDigits[value >> 4], kHexDigits[value & 15]},
                        kMaxEscapeBytes};
    } else {
      escapes[value] = {{byte}, 1};
    }
  }
  return escapes;
}();

/// The bytes that escaping adds to `byte`; 0 when it is not escaped.
constexpr std::size_t escape_gain(char byte) noexcept {
  return kEscapes[static_cast<unsigned char>(byte)].size - std::size_t{1};
}

/// The layout of the 16 bytes of a Text or a JsonValue. may_own(), is_text() and JsonValue::kind() depend
/// on the order.
enum class Tag : std::uint8_t {
  null,
  boolean,
  integer,
  floating,
  list,  // from here to shared_text: may own memory, see may_own()
  object,
  foreign,
  big_integer,  // digits, stored like a shared text
  shared_text,  // from here: texts, see is_text()
  literal_text,
  inline_text,  // plus the size: 0 to kInlineCapacity
};

/// The longest text that is stored inside its object, in bytes.
inline constexpr std::size_t kInlineCapacity = 14;
/// The longest text, in bytes.
inline constexpr std::size_t kMaxTextBytes = std::numeric_limits<std::uint32_t>::max();
/// The gain byte of a shared text that gains 255 bytes or more. The gain is then stored with the characters.
inline constexpr std::uint8_t kLargeGain = 0xFF;

/// The tag of a text of `size` bytes, at most kInlineCapacity. Every such text is stored inside its object.
constexpr Tag inline_tag(std::size_t size) noexcept {
  return static_cast<Tag>(static_cast<std::size_t>(Tag::inline_text) + size);
}

/// Whether a value or text with `tag` may own memory.
constexpr bool may_own(Tag tag) noexcept {
  return tag >= Tag::list && tag <= Tag::shared_text;
}

/// Whether `tag` is that of a text.
constexpr bool is_text(Tag tag) noexcept {
  return tag >= Tag::shared_text;
}

/// A text stored inside its object, padded with NULs.
struct InlineText {
  Tag tag;
  std::uint8_t escape_gain;
  char characters[kInlineCapacity];
};

/// The 8 bytes before the pointer of an outline text, a list or an object.
struct Head {
  Tag tag;
  std::uint8_t escape_gain;  ///< Of a text.
  std::uint16_t unused;
  std::uint32_t size;
};

/// A text whose characters are elsewhere: a literal, or shared characters.
struct OutlineText {
  Head head;
  const char* characters;
};

/// An integer in the range of std::int64_t.
struct SmallInteger {
  Tag tag;
  std::int64_t value;
};

/// The 16 bytes of a text or an integer, without ownership.
union TextBits {
  InlineText in;
  OutlineText out;
  SmallInteger number;

  // All members begin with the tag, and the texts with tag and gain, so these can be read through any of
  // them.
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

/// Whether two texts are equal. At least one must be stored inside its object.
inline bool same_bits(const TextBits& a, const TextBits& b) noexcept {
  std::uint64_t words[4];
  std::memcpy(words, &a, sizeof a);
  std::memcpy(words + 2, &b, sizeof b);
  return words[0] == words[2] && words[1] == words[3];
}

/// The empty text.
inline constexpr TextBits kEmptyText{.in = {Tag::inline_text, 0, {}}};

/// The bits of a string literal, checked at compile time.
template <std::size_t kSize>
consteval TextBits literal_bits(const char (&literal)[kSize]) {
  static_assert(kSize - 1 <= kMaxTextBytes);
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
  text.copy(bits.in.characters, text.size());
  return bits;
}

}  // namespace detail
}  // namespace vantrex::values

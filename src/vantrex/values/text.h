// Text: an immutable UTF-8 string in 16 bytes.
//
// Purpose: the strings and keys of JSON values. A Text is well-formed UTF-8
// from the moment it is made, and it knows what its JSON string form costs, so
// that measuring an answer never reads a string again.
//
// Ownership: up to 14 bytes live inside the object, longer text in a counted
// block that copies share, and literals are referred to where they are.
// Copying never allocates.
//
// Threads: like an int. Copies of one text may be used, copied and destroyed
// on different threads at once; one object must not be written while another
// thread uses it.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/escapes.h"

namespace vantrex::values {

class Arena;
class Text;

namespace detail {
struct ValueAccess;
}

// Thrown when bytes that are no well-formed UTF-8 are made a text.
class NEXT_STEPS_API InvalidUtf8 : public std::invalid_argument {
 public:
  // `byte_offset` as below.
  explicit InvalidUtf8(std::size_t byte_offset);

  // Offset, in bytes from 0, of the first byte that belongs to no well-formed
  // sequence.
  std::size_t byte_offset() const noexcept { return byte_offset_; }

 private:
  std::size_t byte_offset_;
};

namespace detail {

// How the 16 bytes of a Text or a JsonValue are to be read. The order matters:
// what owns something stands together, and so do the texts.
enum class Tag : std::uint8_t {
  null,
  boolean,
  integer,
  floating,
  list,  // from here to shared_text: owns a block
  object,
  foreign,
  big_integer,  // digits, held like a shared text
  shared_text,
  literal_text,
  inline_text,  // plus the size: 0 to kInlineCapacity
};

inline constexpr std::size_t kInlineCapacity = 14;

// The tag of a text of `size` bytes that lies inside the object. Every text
// that is short enough does.
constexpr Tag inline_tag(std::size_t size) noexcept {
  return static_cast<Tag>(static_cast<std::size_t>(Tag::inline_text) + size);
}

constexpr bool owns_block(Tag tag) noexcept {
  return tag >= Tag::list && tag <= Tag::shared_text;
}

constexpr bool is_text(Tag tag) noexcept {
  return tag >= Tag::shared_text;
}

// The bytes of a long text, followed by the characters. A block of its own is
// counted; one inside an arena lives as long as the arena, and whoever refers
// to it from outside counts the arena instead.
struct TextBlock {
  Arena* arena;
  std::atomic<std::size_t> references;
  std::size_t size;
  std::size_t escape_gain;

  const char* characters() const noexcept { return reinterpret_cast<const char*>(this + 1); }
  char* characters() noexcept { return reinterpret_cast<char*>(this + 1); }
};

NEXT_STEPS_API void retain(TextBlock* block) noexcept;
NEXT_STEPS_API void release(TextBlock* block) noexcept;

// A text that lies inside the object.
struct InlineText {
  Tag tag;
  std::uint8_t escape_gain;
  char characters[kInlineCapacity];
};

// A text that lies where the program's literals are.
struct LiteralText {
  Tag tag;
  std::uint8_t escape_gain;
  std::uint32_t size;
  const char* text;
};

// A key that is looked for among texts: its bytes and, when they fit in a text,
// the 16 that an equal text has, less its gain. The compiler lays out those of a
// literal.
class WantedKey {
 public:
  explicit WantedKey(std::string_view key) noexcept : view_(key) {
    if (!is_short()) return;
    InlineText text{inline_tag(key.size()), 0, {}};
    if (!key.empty()) std::memcpy(text.characters, key.data(), key.size());
    words_ = std::bit_cast<Words>(text);
  }

  explicit WantedKey(const Text& key) noexcept;

  std::string_view view() const noexcept { return view_; }
  bool is_short() const noexcept { return view_.size() <= kInlineCapacity; }

  // Whether `text` has the bytes of this key, which is short.
  bool matches(const Text& text) const noexcept {
    Words words;
    std::memcpy(&words, static_cast<const void*>(&text), sizeof words);
    return ((words[0] & kCompared[0]) ^ words_[0]) == 0 && words[1] == words_[1];
  }

 private:
  using Words = std::array<std::uint64_t, 2>;
  static constexpr Words kGain = std::bit_cast<Words>(InlineText{Tag::null, 0xFF, {}});
  static constexpr Words kCompared = {~kGain[0], ~kGain[1]};

  std::string_view view_;
  Words words_{};
};

}  // namespace detail

// A text that the program itself holds: a string literal in ASCII that gains at
// most 255 bytes when it is escaped, checked when the program is compiled. It
// costs nothing to make a Text of it.
class TextLiteral {
 public:
  // Refers to `text`, which ends with a NUL. Any other text than described above
  // does not compile.
  // NOLINTNEXTLINE(google-explicit-constructor): a literal is a text.
  consteval TextLiteral(const char* text) {
    std::size_t gain = 0;
    std::uint32_t size = 0;
    for (; text[size] != 0; ++size) {
      if (static_cast<unsigned char>(text[size]) >= 0x80) throw "not ASCII";
      gain += detail::escape_gain(text[size]);
    }
    if (gain > 0xFF) throw "too many characters to escape";
    const auto small_gain = static_cast<std::uint8_t>(gain);
    in_place_ = {detail::Tag::literal_text, small_gain, size, text};
    if (size > detail::kInlineCapacity) return;
    inside_ = {detail::inline_tag(size), small_gain, {}};
    std::copy_n(text, size, inside_.characters);
  }

  // The characters of the literal.
  constexpr std::string_view view() const noexcept { return {in_place_.text, in_place_.size}; }
  // NOLINTNEXTLINE(google-explicit-constructor): as const char* does.
  constexpr operator std::string_view() const noexcept { return view(); }
  // Literals are equal when their characters are.
  friend constexpr bool operator==(TextLiteral a, TextLiteral b) noexcept { return a.view() == b.view(); }

 private:
  friend class Text;

  // The 16 bytes of a Text: where the literal is, and, when it is short enough,
  // with it inside.
  detail::LiteralText in_place_{};
  detail::InlineText inside_{};
};

// A text of any length, immutable but for assignment.
class NEXT_STEPS_API Text {
 public:
  // The empty text.
  constexpr Text() noexcept : inline_{detail::Tag::inline_text, 0, {}} {}

  // A copy of `bytes`. Throws InvalidUtf8 when they are not well-formed UTF-8
  // and std::bad_alloc.
  // NOLINTBEGIN(google-explicit-constructor): a string is a text.
  Text(std::string_view bytes);
  Text(const std::string& bytes) : Text(std::string_view(bytes)) {}
  // Throws std::invalid_argument for a null pointer.
  Text(const char* bytes);
  Text(TextLiteral literal) noexcept {
    if (literal.in_place_.size <= detail::kInlineCapacity) {
      inline_ = literal.inside_;
    } else {
      literal_ = literal.in_place_;
    }
  }
  // NOLINTEND(google-explicit-constructor)

  // A copy of `bytes` with each ill-formed piece replaced by U+FFFD. For texts
  // from outside that must not fail: it throws only std::bad_alloc.
  static Text lossy(std::string_view bytes);

  // Copies share a long text and never fail; what is moved from is empty.
  Text(const Text& other) noexcept : Text(other, NoCount{}) {
    if (tag() == detail::Tag::shared_text) detail::retain(shared_.block);
  }
  Text(Text&& other) noexcept : Text(other, NoCount{}) { other.inline_ = {detail::Tag::inline_text, 0, {}}; }
  Text& operator=(Text other) noexcept {
    swap(other);
    return *this;
  }
  ~Text() {
    if (tag() == detail::Tag::shared_text) detail::release(shared_.block);
  }

  // Exchanges the two texts.
  void swap(Text& other) noexcept;

  // The bytes, valid until this object is assigned to or destroyed.
  std::string_view view() const& noexcept {
    if (tag() >= detail::Tag::inline_text) return {inline_.characters, inline_size()};
    if (tag() == detail::Tag::literal_text) return {literal_.text, literal_.size};
    return {shared_.block->characters(), shared_.block->size};
  }
  std::string_view view() const&& = delete;

  // The number of bytes.
  std::size_t size() const noexcept {
    if (tag() >= detail::Tag::inline_text) [[likely]]
      return inline_size();
    return tag() == detail::Tag::literal_text ? literal_.size : shared_.block->size;
  }
  // Whether there is no byte.
  bool empty() const noexcept { return size() == 0; }

  // Bytes that the text gains when it is escaped inside a JSON string.
  std::size_t escape_gain() const noexcept {
    return tag() == detail::Tag::shared_text ? shared_.block->escape_gain : inline_.escape_gain;
  }

  // Texts are equal when their bytes are, and ordered by bytes, which for UTF-8
  // is the order of code points.
  friend bool operator==(const Text& a, const Text& b) noexcept {
    if (a.tag() >= detail::Tag::inline_text && b.tag() >= detail::Tag::inline_text) {
      return std::memcmp(&a.inline_, &b.inline_, sizeof a.inline_) == 0;
    }
    return a.view() == b.view();
  }
  friend std::strong_ordering operator<=>(const Text& a, const Text& b) noexcept {
    return a.view() <=> b.view();
  }

 private:
  friend struct detail::ValueAccess;

  struct NoCount {};
  struct Shared {
    detail::Tag tag;
    std::uint8_t unused;
    detail::TextBlock* block;
  };

  // Makes this empty text one of at most kInlineCapacity bytes.
  void set_inline(std::string_view bytes, std::size_t gain) noexcept {
    inline_.tag = detail::inline_tag(bytes.size());
    inline_.escape_gain = static_cast<std::uint8_t>(gain);
    if (!bytes.empty()) std::memcpy(inline_.characters, bytes.data(), bytes.size());
  }

  // The same 16 bytes, without counting what they refer to.
  Text(const Text& other, NoCount /*unused*/) noexcept {
    std::memcpy(static_cast<void*>(this), static_cast<const void*>(&other), sizeof(Text));
  }
  // Well-formed text whose scan is known.
  Text(std::string_view well_formed, std::size_t escape_gain);

  detail::Tag tag() const noexcept { return inline_.tag; }
  std::size_t inline_size() const noexcept {
    return static_cast<std::size_t>(tag()) - static_cast<std::size_t>(detail::Tag::inline_text);
  }

  // All three begin with the tag and the gain, so these may be read in any.
  union {
    detail::InlineText inline_;
    detail::LiteralText literal_;
    Shared shared_;
  };
};

static_assert(sizeof(Text) == 16);

// The bytes of a short text are there already.
inline detail::WantedKey::WantedKey(const Text& key) noexcept : view_(key.view()) {
  std::memcpy(&words_, static_cast<const void*>(&key), sizeof words_);
  words_[0] &= kCompared[0];
}

// A parameter that takes any text: ill-formed bytes are repaired as Text::lossy
// does it, so that only std::bad_alloc can be thrown.
class LossyText {
 public:
  // The text of what a caller has at hand.
  // NOLINTBEGIN(google-explicit-constructor): stands for what it is made of.
  LossyText(Text text) noexcept : text_(std::move(text)) {}
  LossyText(TextLiteral literal) noexcept : text_(literal) {}
  LossyText(std::string_view bytes) : text_(Text::lossy(bytes)) {}
  LossyText(const std::string& bytes) : text_(Text::lossy(bytes)) {}
  // A null pointer is the empty text.
  LossyText(const char* bytes) : text_(Text::lossy(bytes == nullptr ? std::string_view() : bytes)) {}
  // NOLINTEND(google-explicit-constructor)

  // Hands the text over.
  Text take() && noexcept { return std::move(text_); }

 private:
  Text text_;
};

}  // namespace vantrex::values

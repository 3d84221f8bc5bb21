#include "next_steps/json_reader.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <utility>

#include <nlohmann/json.hpp>

#include "vantrex/values/utf8.h"

namespace next_steps_program {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Text;

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

[[noreturn]] void reject(std::string_view text, std::size_t offset, const std::string& message) {
  throw JsonError(place_of(text, offset), message);
}

// Refuses what the parser would accept silently or take for the end of the
// text, and gives ill-formed bytes a place before anything else is looked at.
void check_bytes(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) reject(text, 0, "byte-order mark before the document");
  // The parser would look for a byte-order mark here, and complain about that.
  if (text.starts_with(kByteOrderMark.front())) reject(text, 0, "invalid literal");
  const std::size_t nul = text.find('\0');
  const std::size_t well_formed = values::scan_utf8(text.substr(0, nul)).well_formed;
  if (well_formed < std::min(nul, text.size())) reject(text, well_formed, "ill-formed UTF-8");
  if (nul != std::string_view::npos) reject(text, nul, "NUL byte");
}

// The quote that opens the string whose closing quote is at `closing`: inside a
// string every quote follows an odd number of backslashes, before it none do.
std::size_t opening_quote(std::string_view text, std::size_t closing) {
  for (std::size_t quote = text.rfind('"', closing - 1);; quote = text.rfind('"', quote - 1)) {
    const std::size_t before = text.substr(0, quote).find_last_not_of('\\');
    const std::size_t backslashes = before == std::string_view::npos ? quote : quote - before - 1;
    if (backslashes % 2 == 0) return quote;
  }
}

// The first byte of the token whose last byte is at `last`. `read` is what the
// parser has read of it, for a number just that.
std::size_t token_start(std::string_view text, std::size_t last, std::string_view read) {
  if (last >= text.size()) return text.size();
  const char byte = text[last];
  if (byte == '"') return opening_quote(text, last);
  if (byte >= '0' && byte <= '9') return last + 1 - read.size();
  for (const std::string_view literal : {"true", "false", "null"}) {
    if (text.substr(0, last + 1).ends_with(literal)) return last + 1 - literal.size();
  }
  return last;
}

// The bytes of a text, telling how far they have been read.
class TrackedByte {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = const char&;

  TrackedByte(const char* byte, const char** reached) : byte_(byte), reached_(reached) {}

  reference operator*() const { return *byte_; }
  TrackedByte& operator++() {
    *reached_ = ++byte_;
    return *this;
  }
  friend bool operator==(const TrackedByte& a, const TrackedByte& b) { return a.byte_ == b.byte_; }

 private:
  const char* byte_;
  const char** reached_;
};

// Builds the value from the parser's events, with a stack of its own.
class TreeBuilder {
 public:
  TreeBuilder(std::string_view text, std::vector<MemberOffset>* members)
      : text_(text), reached_(text.data()), members_(members) {}

  JsonValue build() {
    const char* end = text_.data() + text_.size();
    nlohmann::json::sax_parse(TrackedByte(text_.data(), &reached_), TrackedByte(end, &reached_), this);
    return std::move(root_);
  }

  bool null() { return add(nullptr); }
  bool boolean(bool value) { return add(value); }
  bool number_integer(std::int64_t value) { return add(value); }
  bool number_unsigned(std::uint64_t value) { return add(value); }
  bool number_float(double value, const std::string& raw) {
    // An integer beyond 64 bits comes as a float too, but written as integers are.
    if (const auto integer = Integer::parse(raw)) return add(*integer);
    return add(value);
  }
  bool string(const std::string& value) { return add(Text(value)); }
  static bool binary(const nlohmann::json::binary_t& /*value*/) { return false; }

  bool start_object(std::size_t /*size*/) { return open(JsonObject()); }
  bool start_array(std::size_t /*size*/) { return open(JsonList()); }
  bool end_object() { return close(); }
  bool end_array() { return close(); }
  bool key(const std::string& value) {
    open_.back().key = Text(value);
    if (members_ != nullptr && open_.size() == 1) {
      const auto closing = static_cast<std::size_t>(reached_ - text_.data()) - 1;
      members_->push_back({open_.back().key, opening_quote(text_, closing)});
    }
    return true;
  }

  bool parse_error(std::size_t bytes_read, const std::string& token,
                   const nlohmann::json::exception& error) const {
    constexpr int kOutOfRange = 406;
    const std::size_t last = std::min(bytes_read - 1, text_.size());
    if (error.id == kOutOfRange) reject(text_, token_start(text_, last, token), "number out of range");
    std::string message = error.what();
    message.erase(0, message.find(": ") + 2);
    // A broken token is quoted in the message, and the place is the byte that
    // broke it; else the place is the whole token that was not expected.
    const std::size_t quoted = message.find("; last read: ");
    if (quoted == std::string::npos) reject(text_, token_start(text_, last, token), message);
    reject(text_, last, message.substr(0, quoted));
  }

 private:
  struct Open {
    JsonValue container;
    Text key;  // of the field that is being read
  };

  bool add(JsonValue value) {
    if (open_.empty()) {
      root_ = std::move(value);
      return true;
    }
    Open& parent = open_.back();
    if (JsonList* list = parent.container.list()) {
      list->push_back(std::move(value));
    } else {
      parent.container.object()->set(parent.key, std::move(value));
    }
    return true;
  }
  bool open(JsonValue container) {
    open_.push_back({std::move(container), {}});
    return true;
  }
  bool close() {
    JsonValue finished = std::move(open_.back().container);
    open_.pop_back();
    return add(std::move(finished));
  }

  std::string_view text_;
  const char* reached_;
  std::vector<MemberOffset>* members_;
  std::vector<Open> open_;
  JsonValue root_;
};

}  // namespace

Place place_of(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t line_start = before.rfind('\n') + 1;  // 0 when there is none
  return {.line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1,
          .column = offset - line_start + 1};
}

JsonValue read_json(std::string_view text, std::vector<MemberOffset>* members) {
  check_bytes(text);
  return TreeBuilder(text, members).build();
}

JsonObject read_json_object(std::string_view text, std::string_view what,
                            std::vector<MemberOffset>* members) {
  JsonValue value = read_json(text, members);
  if (JsonObject* object = value.object()) return std::move(*object);
  std::string message(what);
  message += " must be an object, not ";
  message += kind_name(value);
  reject(text, text.find_first_not_of(kWhiteSpace), message);
}

std::string_view kind_name(const JsonValue& value) {
  switch (value.kind()) {
    case values::Kind::null:
      return "null";
    case values::Kind::boolean:
      return "a boolean";
    case values::Kind::integer:
      return "an integer";
    case values::Kind::floating:
      return "a float";
    case values::Kind::string:
      return "a string";
    case values::Kind::list:
      return "a list";
    case values::Kind::object:
      return "an object";
    case values::Kind::foreign:
      break;
  }
  return "a foreign value";
}

}  // namespace next_steps_program

#include "next_steps/json_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <utility>

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

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

// Refuses ill-formed UTF-8, NUL bytes and a byte-order mark. Each of them makes the parser fail or, for a NUL
// byte, stop early, so this runs only then. Its errors come before all others.
void check_bytes(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) reject(text, 0, "byte-order mark before the document");
  const std::size_t nul = text.find('\0');
  const std::size_t well_formed = values::scan_utf8(text.substr(0, nul)).well_formed;
  if (well_formed < std::min(nul, text.size())) reject(text, well_formed, "ill-formed UTF-8");
  if (nul != std::string_view::npos) reject(text, nul, "NUL byte");
}

// Returns the end of the hexadecimal digits that start at `begin`; at most four count.
std::size_t hex_end(std::string_view text, std::size_t begin) {
  const std::size_t end = text.find_first_not_of("0123456789abcdefABCDEF", begin);
  return std::min({end, begin + 4, text.size()});
}

// Whether the four digits at `digits` are a surrogate with a second digit out of `seconds`.
bool is_surrogate(std::string_view text, std::size_t digits, std::string_view seconds) {
  return (text[digits] | 0x20) == 'd' && seconds.find(text[digits + 1]) != std::string_view::npos;
}
constexpr std::string_view kOfHigh = "89abAB";
constexpr std::string_view kOfLow = "cdefCDEF";

// Returns the offset of the byte that makes the escape at `escape` invalid.
std::size_t breaking_byte(std::string_view text, std::size_t escape) {
  if (text.substr(escape, 2) != "\\u") return escape + 1;
  const std::size_t end = hex_end(text, escape + 2);
  if (end < escape + 6) return end;
  if (is_surrogate(text, escape + 2, kOfLow)) return end - 1;  // without a high one before it
  if (text.substr(end, 2) != "\\u") return text.substr(end, 1) == "\\" ? end + 1 : end;
  const std::size_t second_end = hex_end(text, end + 2);
  return second_end < end + 6 ? second_end : second_end - 1;
}

// Returns the offset of the first low surrogate without a high one before it, in the string
// that starts at `quote`. The string has one, and its other escapes are valid.
std::size_t lone_low_surrogate(std::string_view text, std::size_t quote) {
  constexpr std::size_t kSimple = 2;  // of "\n"
  constexpr std::size_t kUnit = 6;    // of "\u00e9"
  for (std::size_t escape = quote;;) {
    escape = text.find('\\', escape);
    if (text[escape + 1] != 'u') {
      escape += kSimple;
    } else if (is_surrogate(text, escape + 2, kOfLow)) {
      return escape;
    } else {
      escape += is_surrogate(text, escape + 2, kOfHigh) ? 2 * kUnit : kUnit;
    }
  }
}

// Memory for the parser's stack. The parser's own allocator does not report failure.
class ThrowingAllocator {
 public:
  static void* Malloc(std::size_t size) { return Realloc(nullptr, 0, size); }
  static void* Realloc(void* memory, std::size_t /*size*/, std::size_t new_size) {
    if (new_size == 0) {
      Free(memory);
      return nullptr;
    }
    void* const grown = std::realloc(memory, new_size);  // NOLINT(cppcoreguidelines-no-malloc)
    return grown == nullptr ? throw std::bad_alloc() : grown;
  }
  static void Free(void* memory) noexcept { std::free(memory); }  // NOLINT(cppcoreguidelines-no-malloc)
};

// Builds the value from the parser's events. Uses no recursion.
class TreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TreeBuilder> {
 public:
  TreeBuilder(std::string_view text, std::vector<MemberOffset>* members)
      : text_(text), copy_(text), stream_(copy_.data()), members_(members) {}

  JsonValue build() {
    constexpr unsigned kFlags =
        rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag | rapidjson::kParseNumbersAsStringsFlag;
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator> reader;
    const rapidjson::ParseResult result = reader.Parse<kFlags>(stream_, *this);
    if (result.IsError()) reject_token(result.Code(), result.Offset());
    if (stream_.Tell() < text_.size()) check_bytes(text_);  // the parser ends at a NUL byte
    return std::move(root_);
  }

  // The parser's events. During an event the stream is at the first byte of its token.
  bool Null() { return add(nullptr); }
  bool Bool(bool value) { return add(value); }
  bool RawNumber(const char* digits, std::size_t size, bool /*copy*/) { return add(number({digits, size})); }
  bool String(const char* bytes, std::size_t size, bool /*copy*/) { return add(text({bytes, size})); }
  bool StartObject() { return open(JsonObject()); }
  bool StartArray() { return open(JsonList()); }
  bool EndObject(std::size_t /*count*/) { return close(); }
  bool EndArray(std::size_t /*count*/) { return close(); }
  bool Key(const char* bytes, std::size_t size, bool /*copy*/) {
    open_.back().key = text({bytes, size});
    if (members_ != nullptr && open_.size() == 1) {
      members_->push_back({open_.back().key, stream_.Tell()});
    }
    return true;
  }

 private:
  struct Open {
    JsonValue container;
    Text key;  // of the field that is being read
  };

  // Returns the text of the current token.
  Text text(std::string_view unescaped) {
    try {
      return {unescaped};
    } catch (const values::InvalidUtf8&) {  // a lone low surrogate, which the parser accepts
      check_bytes(text_);
      reject_token(rapidjson::kParseErrorStringUnicodeSurrogateInvalid,
                   lone_low_surrogate(text_, stream_.Tell()));
    }
  }

  // Returns the number of the current token.
  JsonValue number(std::string_view digits) {
    const char* end = digits.data() + digits.size();
    std::int64_t small = 0;
    if (const auto read = std::from_chars(digits.data(), end, small);
        read.ptr == end && read.ec == std::errc()) {
      return small;
    }
    double value = 0;
    if (std::from_chars(digits.data(), end, value).ec != std::errc()) {
      value = std::strtod(std::string(digits).c_str(), nullptr);  // overflow is infinity, underflow is not
    }
    if (std::isinf(value)) reject_token(rapidjson::kParseErrorNumberTooBig, stream_.Tell());
    if (const auto integer = Integer::parse(digits)) return *integer;
    return value;
  }

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

  [[noreturn]] void reject_token(rapidjson::ParseErrorCode code, std::size_t offset) const {
    const bool in_string = code >= rapidjson::kParseErrorStringUnicodeEscapeInvalidHex &&
                           code <= rapidjson::kParseErrorStringEscapeInvalid;
    if (!in_string) reject(text_, offset, rapidjson::GetParseError_En(code));
    if (text_[offset] != '\\') reject(text_, offset, "Control character in string.");
    reject(text_, breaking_byte(text_, offset), rapidjson::GetParseError_En(code));
  }

  std::string_view text_;
  std::string copy_;  // the parser unescapes its strings in place
  rapidjson::InsituStringStream stream_;
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
  try {
    return TreeBuilder(text, members).build();
  } catch (const JsonError&) {
    check_bytes(text);
    throw;
  }
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

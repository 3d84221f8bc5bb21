#include "requests/json_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <stdexcept>
#include <utility>

// Sizes have 64 bits, and a string may be longer than the parser's assertions allow.
#define RAPIDJSON_NO_SIZETYPEDEFINE
#define RAPIDJSON_ASSERT(condition) static_cast<void>(0)  // NOLINT(cppcoreguidelines-macro-usage)
namespace rapidjson {
using SizeType = std::size_t;
}
#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include "requests/json_tokens.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/values/utf8.h"

namespace next_steps_requests {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;
using values::Text;

namespace {

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

using Stream = rapidjson::InsituStringStream;
using Reader = rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, ThrowingAllocator>;
constexpr unsigned kFlags = rapidjson::kParseInsituFlag | rapidjson::kParseIterativeFlag;

struct HowToRead {
  Encoding encoding = Encoding::strict;
  RepeatedKeys repeated = RepeatedKeys::replace;
  ObjectReading* fields = nullptr;  // receives fields of the outermost object; null when a value is built
};

// Builds the value from the parser's events, or the wanted fields of the outermost object. Uses no recursion.
class TreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TreeBuilder> {
 public:
  TreeBuilder(std::string_view text, const HowToRead& how)
      : text_(text), memory_(text), stream_(nullptr), how_(how) {
    if (how.encoding == Encoding::lossy) replace_lone_surrogates(memory_);
    stream_ = Stream(memory_.data());
  }

  // Throws JsonError and std::bad_alloc.
  JsonValue build();

  // The parser's events. During an event the stream is at the first byte of its token.
  bool Null() { return add(nullptr); }
  bool Bool(bool value) { return add(value); }
  bool String(const char* bytes, std::size_t size, bool /*copy*/) {
    return is_skipping() ? check({bytes, size}) : add(text({bytes, size}));
  }
  bool StartObject() { return open(JsonObject()); }
  bool StartArray() { return open(JsonList()); }
  bool EndObject(std::size_t /*count*/) { return close(); }
  bool EndArray(std::size_t /*count*/) { return close(); }
  bool Key(const char* bytes, std::size_t size, bool /*copy*/) {
    if (how_.fields != nullptr && open_.size() == 1) return find_field({bytes, size});
    if (is_skipping()) return check({bytes, size});
    open_.back().key = text({bytes, size});
    if (how_.repeated == RepeatedKeys::are_errors &&
        std::as_const(open_.back().container).object()->contains(open_.back().key.view())) {
      reject(stream_.Tell(), "repeated key " + values::compact_text(open_.back().key));
    }
    return true;
  }

  // Adds the number at the place of the stream, and returns its size.
  std::size_t add_number() {
    const std::size_t offset = stream_.Tell();
    const NumberScan scan = scan_number(stream_.src_);
    if (scan.error != nullptr) reject(offset + scan.size, scan.error);
    add(number({stream_.src_, scan.size}, scan.is_integer));
    return scan.size;
  }

 private:
  struct Open {
    JsonValue container;
    Text key;  // of the field that is being read
  };

  // Whether the current token is in a field that is not wanted. Nothing is built of it.
  bool is_skipping() const { return how_.fields != nullptr && !open_.empty() && field_ == nullptr; }

  // Rejects ill-formed UTF-8 in a text that is not kept.
  bool check(std::string_view unescaped) const {
    const bool is_strict = how_.encoding == Encoding::strict;
    if (is_strict && values::scan_utf8(unescaped).well_formed < unescaped.size()) reject(text_.size(), "");
    return true;
  }

  // Returns the text of the current token.
  Text text(std::string_view unescaped) {
    try {
      return how_.encoding == Encoding::strict ? Text(unescaped) : Text::lossy(unescaped);
    } catch (const values::InvalidUtf8&) {
      reject(text_.size(), "");  // that is, the fault of the encoding
    } catch (const std::length_error& error) {
      reject(stream_.Tell(), error.what());
    }
  }

  // Returns the number of the current token.
  JsonValue number(std::string_view digits, bool is_integer) {
    std::int64_t small = 0;
    if (is_integer &&
        std::from_chars(digits.data(), digits.data() + digits.size(), small).ec == std::errc()) {
      return small;
    }
    const double value = nearest_double(digits.data());  // the whole text ends in a NUL
    if (std::isinf(value)) reject(stream_.Tell(), "Number too big to be stored in double.");
    if (is_integer) return *Integer::parse(digits);
    return value;
  }

  bool add(JsonValue value) {
    if (open_.empty()) {
      root_ = std::move(value);
    } else if (is_skipping()) {
      return true;
    } else if (how_.fields != nullptr && open_.size() == 1) {
      *field_ = {std::move(value), field_offset_};
    } else if (JsonList* list = open_.back().container.list()) {
      list->push_back(std::move(value));
    } else {
      open_.back().container.object()->set(open_.back().key, std::move(value));
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

  // Finds the field that the next value belongs to.
  bool find_field(std::string_view key) {
    field_ = how_.fields->find(key);
    field_offset_ = stream_.Tell();
    Field& other = how_.fields->other;
    if (field_ == nullptr && !other.is_there()) other = {text(key), field_offset_};
    return field_ != nullptr || check(key);
  }

  // Rejects the fault at which the parser stopped, or an earlier one that the parser does not see.
  [[noreturn]] void reject(const TextFault& parsed) const {
    const TextFault fault = first_fault(text_, parsed, how_.encoding == Encoding::strict);
    throw JsonError(place_of(text_, fault.offset), std::string(fault.message), fault.concerns_encoding);
  }
  [[noreturn]] void reject(std::size_t offset, std::string_view message) const {
    reject(TextFault{offset, message, false});
  }
  // Rejects what the parser reports.
  [[noreturn]] void reject_token(rapidjson::ParseErrorCode code, std::size_t offset) const {
    const bool in_string = code >= rapidjson::kParseErrorStringUnicodeEscapeInvalidHex &&
                           code <= rapidjson::kParseErrorStringEscapeInvalid;
    if (!in_string) reject(offset, rapidjson::GetParseError_En(code));
    if (text_[offset] != '\\') reject(offset, "Control character in string.");
    reject(escape_fault(text_, offset));
  }

  std::string_view text_;
  std::string memory_;  // a copy of the text, in which the parser unescapes the strings
  Stream stream_;
  HowToRead how_;
  std::vector<Open> open_;
  JsonValue root_;
  Field* field_ = nullptr;  // that is being read, of the outermost object; null if it is not wanted
  std::size_t field_offset_ = 0;
};

}  // namespace
}  // namespace next_steps_requests

// The parser's own function rejects a number whose digits alone, without the exponent, are out of range, and
// counts in an int.
template <>
template <>
void rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, next_steps_requests::ThrowingAllocator>::
    ParseNumber<next_steps_requests::kFlags>(next_steps_requests::Stream& is,
                                             next_steps_requests::TreeBuilder& handler) {
  is.src_ += handler.add_number();
}

namespace next_steps_requests {
namespace {

JsonValue TreeBuilder::build() {
  Reader reader;
  try {
    const rapidjson::ParseResult result = reader.Parse<kFlags>(stream_, *this);
    const bool is_cut = result.Code() == rapidjson::kParseErrorObjectMissCommaOrCurlyBracket;
    if (is_cut && open_.size() == 1 && field_ != nullptr) *field_ = Field();  // its value may go on
    if (result.IsError()) reject_token(result.Code(), result.Offset());
  } catch (const std::length_error& error) {  // of a list or an object
    reject(stream_.Tell(), error.what());
  }
  if (stream_.Tell() < text_.size()) reject(stream_.Tell(), "NUL byte");  // where the parser ends
  return std::move(root_);
}

// Returns the object that `value`, read from `text`, must be.
JsonObject object_of(JsonValue value, std::string_view text, std::string_view what) {
  if (JsonObject* object = value.object()) return std::move(*object);
  throw JsonError(place_of(text, text.find_first_not_of(" \t\n\r")),
                  std::string(what) + ' ' + wrong_kind(Kind::object, "", value.kind()));
}

}  // namespace

Place place_of(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t line_start = before.rfind('\n') + 1;  // 0 when there is none
  return {.line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1,
          .column = offset - line_start + 1};
}

InputRejected in_source(const std::string& source, const JsonError& error, std::size_t first_line) {
  return {source, first_line + error.place().line - 1, error.place().column, error.what()};
}

JsonValue read_json(std::string_view text) {
  return TreeBuilder(text, {}).build();
}

JsonObject read_json_object(std::string_view text, std::string_view what, RepeatedKeys repeated) {
  return object_of(TreeBuilder(text, {.repeated = repeated}).build(), text, what);
}

ObjectReading read_fields(std::string_view text, std::string_view what, Keys keys, Encoding encoding) {
  ObjectReading reading{keys, std::vector<Field>(keys.size()), Field(), std::nullopt};
  try {
    object_of(TreeBuilder(text, {.encoding = encoding, .fields = &reading}).build(), text, what);
  } catch (const JsonError& error) {
    reading.error = error;
  }
  return reading;
}

std::string wrong_kind(Kind kind, std::string_view or_null, Kind found) {
  constexpr std::array<std::string_view, 8> kNames = {
      "null", "a boolean", "an integer", "a float", "a string", "a list", "an object", "a foreign value"};
  const auto name = [&](Kind each) { return kNames.at(static_cast<std::size_t>(each)); };
  std::string message = "must be ";
  return message.append(name(kind)).append(or_null).append(", not ").append(name(found));
}

}  // namespace next_steps_requests

// JsonValue, JsonList and JsonObject: the values of answers, arguments and steps.
//
// Purpose: a JSON-like value type. Objects keep insertion order, integers are unbounded, strings are
// well-formed UTF-8, and a ForeignValue carries any other C++ object. Reading never fails: an accessor
// returns nothing for a value of another kind; an absent field reads as null. No operation recurses on depth.
//
// Ownership: value types. A list or an object owns its items. Moving takes constant time and moves no item.
// Copying is deep: one allocation per non-empty list or object, and one more for an object of more than 32
// fields. Long texts, foreign values and integers outside the range of std::int64_t are immutable; copies
// share them by reference count.
//
// Threads: like an int. Concurrent reads and copies of one value are safe; a change needs exclusive access.
// Reading changes nothing, not even caches.
//
// Errors: ill-formed UTF-8 throws InvalidUtf8, a failed allocation std::bad_alloc, and more than 2^31 items
// in a list or an object, or more than 2^32 - 1 bytes in a text, std::length_error. An operation that throws
// leaves its object unchanged.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <iosfwd>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/conversions.h"
#include "vantrex/values/foreign.h"
#include "vantrex/values/integer.h"
#include "vantrex/values/path_step.h"
#include "vantrex/values/text.h"

namespace vantrex::values {

struct JsonField;

/// The kinds of a value. An integer has any size; a float is a double.
enum class Kind : std::uint8_t { null, boolean, integer, floating, string, list, object, foreign };

namespace detail {
struct ValueAccess;
}

/// An ordered list of values. Every non-const operation invalidates pointers, references and iterators into
/// it.
class NEXT_STEPS_API JsonList {
 public:
  using value_type = JsonValue;              ///< The type of an item.
  using size_type = std::size_t;             ///< The type of size().
  using difference_type = std::ptrdiff_t;    ///< The type of the difference of two iterators.
  using reference = const JsonValue&;        ///< Const: iterators only read.
  using const_reference = const JsonValue&;  ///< The same type as `reference`.
  using iterator = const JsonValue*;         ///< Const and contiguous.
  using const_iterator = const JsonValue*;   ///< The same type as `iterator`.

  JsonList() noexcept = default;  ///< An empty list.

  /// The items of a sequence, such as a std::vector.
  template <detail::Sequence Range>
  explicit JsonList(const Range& items);
  /// The elements of a tuple or a pair.
  template <detail::FixedTuple Tuple>
  explicit JsonList(const Tuple& items);

  /// The given items: JsonList::of(1, "two", nullptr).
  template <typename... Items>
  static JsonList of(Items&&... items);

  JsonList(const JsonList& other);               ///< A deep copy.
  JsonList(JsonList&& other) noexcept;           ///< Takes the items; `other` is then empty.
  JsonList& operator=(JsonList other) noexcept;  ///< Copies, or moves from an rvalue.
  ~JsonList();  ///< Allocates nothing; the stack use does not depend on depth.

  std::size_t size() const noexcept { return head_.size; }  ///< The number of items.
  bool empty() const noexcept { return size() == 0; }       ///< Whether there is no item.

  const JsonValue* begin() const noexcept { return items_; }  ///< The first item.
  const JsonValue* end() const noexcept;                      ///< One past the last item.

  /// The item at `position`, which must be less than size().
  const JsonValue& operator[](std::size_t position) const& noexcept;
  const JsonValue& operator[](std::size_t position) const&& = delete;
  /// The item at `position`, for changes; `position` must be less than size().
  JsonValue& mutable_item(std::size_t position) & noexcept;

  const JsonValue& back() const& noexcept;  ///< The last item. The list must not be empty.
  const JsonValue& back() const&& = delete;

  /// Like JsonValue::at_path, with at least one step.
  template <typename... Steps>
  const JsonValue& at_path(const detail::PathStep& first, const Steps&... rest) const& noexcept;
  template <typename... Steps>
  const JsonValue& at_path(const Steps&... steps) const&& = delete;

  void push_back(JsonValue item);             ///< Appends `item`. Amortised constant time.
  void truncate(std::size_t count) noexcept;  ///< Removes all items after the first `count`.
  void clear() noexcept { truncate(0); }      ///< Removes all items; keeps the memory.
  void reserve(std::size_t capacity);         ///< Ensures memory for `capacity` items in total.

  /// Lists are equal when they have equal items in the same order.
  friend NEXT_STEPS_API bool operator==(const JsonList& a, const JsonList& b);

  /// Writes the compact text.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonList& list);

 private:
  friend struct detail::ValueAccess;

  void dispose() noexcept;

  static constexpr detail::Head kEmpty{detail::Tag::list, 0, 0, 0};

  detail::Head head_ = kEmpty;
  JsonValue* items_ = nullptr;  // null when no memory is allocated
};

/// String-keyed fields in insertion order. Every non-const operation invalidates pointers, references and
/// iterators into it.
class NEXT_STEPS_API JsonObject {
 public:
  using value_type = JsonField;              ///< The type of a field.
  using size_type = std::size_t;             ///< The type of size().
  using difference_type = std::ptrdiff_t;    ///< The type of the difference of two iterators.
  using reference = const JsonField&;        ///< Const: iterators only read.
  using const_reference = const JsonField&;  ///< The same type as `reference`.
  using iterator = const JsonField*;         ///< Const and contiguous.
  using const_iterator = const JsonField*;   ///< The same type as `iterator`.

  struct FieldInit;

  JsonObject() noexcept = default;  ///< An empty object.

  /// The given fields: JsonObject{{"fqn", fqn}, {"note", nullptr}}. A repeated key keeps its first position
  /// and its last value.
  JsonObject(std::initializer_list<FieldInit> fields);

  /// The fields of a string-keyed map, in the map's order.
  template <detail::StringKeyedMap Map>
  explicit JsonObject(const Map& map);

  JsonObject(const JsonObject& other);               ///< A deep copy.
  JsonObject(JsonObject&& other) noexcept;           ///< Takes the fields; `other` is then empty.
  JsonObject& operator=(JsonObject other) noexcept;  ///< Copies, or moves from an rvalue.
  ~JsonObject();  ///< Allocates nothing; the stack use does not depend on depth.

  std::size_t size() const noexcept { return head_.size; }  ///< The number of fields.
  bool empty() const noexcept { return size() == 0; }       ///< Whether there is no field.

  const JsonField* begin() const noexcept { return fields_; }  ///< The first field.
  const JsonField* end() const noexcept;                       ///< One past the last field.

  /// The value of the field `key`, or a null pointer when absent. Constant time on average.
  const JsonValue* find(std::string_view key) const& noexcept;
  const JsonValue* find(std::string_view key) const&& = delete;
  const JsonValue* find(std::nullptr_t) const& = delete;
  /// The value of the field `key` for changes, or a null pointer when absent. Constant time on average.
  JsonValue* find_mutable(std::string_view key) & noexcept;
  JsonValue* find_mutable(std::nullptr_t) & = delete;

  /// The value of the field `key`; an absent field reads as null.
  const JsonValue& operator[](std::string_view key) const& noexcept;
  const JsonValue& operator[](std::string_view key) const&& = delete;
  const JsonValue& operator[](std::nullptr_t) const& = delete;

  /// Like JsonValue::at_path, with at least one step.
  template <typename... Steps>
  const JsonValue& at_path(const detail::PathStep& first, const Steps&... rest) const& noexcept;
  template <typename... Steps>
  const JsonValue& at_path(const Steps&... steps) const&& = delete;

  /// Whether there is a field `key`. Its value may be null.
  bool contains(std::string_view key) const noexcept { return find(key) != nullptr; }
  bool contains(std::nullptr_t) const = delete;

  /// Replaces the value of the field `key`, or appends the field when absent. Amortised constant time on
  /// average. Throws InvalidUtf8 for an ill-formed key.
  void set(const TextArgument& key, JsonValue value);

  /// Appends a field without a lookup: `key` must be absent. Amortised constant time. Throws InvalidUtf8 for
  /// an ill-formed key.
  void append(const TextArgument& key, JsonValue value);

  /// Removes the field `key` and returns its value, or nothing when absent. The other fields keep their
  /// order. Linear in the number of fields.
  std::optional<JsonValue> remove(std::string_view key) noexcept;
  std::optional<JsonValue> remove(std::nullptr_t) = delete;

  void clear() noexcept { *this = JsonObject(); }  ///< Removes all fields and frees their memory.

  void reserve(std::size_t capacity);  ///< Ensures memory for `capacity` fields in total.

  /// Objects are equal when they have equal fields in the same order.
  friend NEXT_STEPS_API bool operator==(const JsonObject& a, const JsonObject& b);

  /// Writes the compact text.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonObject& object);

 private:
  friend struct detail::ValueAccess;

  void dispose() noexcept;
  const JsonValue* find_short(std::string_view key) const noexcept;
  void append_new(Text key, JsonValue value);

  static constexpr detail::Head kEmpty{detail::Tag::object, 0, 0, 0};

  detail::Head head_ = kEmpty;
  JsonField* fields_ = nullptr;  // null when no memory is allocated
};

/// One value of any kind. An accessor returns nothing for a value of another kind; the pointers and views
/// that it returns are valid until the value changes.
class NEXT_STEPS_API JsonValue {
 public:
  // NOLINTBEGIN(google-explicit-constructor): these conversions are the purpose of the class.
  JsonValue() noexcept : JsonValue(nullptr) {}                                     ///< Null.
  constexpr JsonValue(std::nullptr_t) noexcept : plain_{detail::Tag::null, {}} {}  ///< Null.

  /// A boolean. Only a bool converts to it.
  template <std::same_as<bool> Boolean>
  JsonValue(Boolean value) noexcept : plain_{detail::Tag::boolean, {.boolean = value}} {}

  /// An integer. Only an unsigned value of 2^63 or more allocates.
  template <CountingInteger Number>
  JsonValue(Number value) : plain_{detail::Tag::integer, {.integer = static_cast<std::int64_t>(value)}} {
    if (!std::in_range<std::int64_t>(value)) *this = JsonValue(Integer(value));
  }
  JsonValue(Integer value) noexcept;  ///< An integer of any size.

  /// A float, converted to double.
  template <std::floating_point Number>
  JsonValue(Number value) noexcept
      : plain_{detail::Tag::floating, {.floating = static_cast<double>(value)}} {}

  JsonValue(Text text) noexcept : text_(std::move(text)) {}     ///< A string.
  JsonValue(const TextLiteral& text) noexcept : text_(text) {}  ///< A string.
  JsonValue(std::string_view text) : text_(text) {}             ///< A string. May throw InvalidUtf8.
  /// A string of any other type. Throws std::invalid_argument for a null pointer, InvalidUtf8 for ill-formed
  /// UTF-8.
  template <detail::StringValue T>
  JsonValue(const T& text) : text_(text) {}

  JsonValue(JsonList list) noexcept : list_(std::move(list)) {}          ///< A list.
  JsonValue(JsonObject object) noexcept : object_(std::move(object)) {}  ///< An object.
  /// A foreign value, shared with `value`.
  JsonValue(const ForeignValue& value) noexcept : foreign_{detail::Tag::foreign, value} {}

  /// The result of `JsonValue to_json_value(const T&)`, which is declared in the namespace of T. T may be an
  /// enum. Takes precedence over the conversions below.
  template <detail::HasToJsonValue T>
  JsonValue(const T& value) : JsonValue(JsonValue(to_json_value(value))) {}

  /// The value of an optional, or null.
  template <typename T>
  requires std::is_constructible_v<JsonValue, const T&> JsonValue(const std::optional<T>& value)
      : JsonValue() {
    if (value) *this = JsonValue(*value);
  }
  /// The list of a sequence's items.
  template <detail::SequenceOfValues Range>
  JsonValue(const Range& items) : JsonValue(JsonList(items)) {}
  /// The list of a tuple's or a pair's elements.
  template <detail::TupleOfValues Tuple>
  JsonValue(const Tuple& items) : JsonValue(JsonList(items)) {}
  /// The object of a string-keyed map.
  template <detail::MapOfValues Map>
  JsonValue(const Map& map) : JsonValue(JsonObject(map)) {}

  /// Rejects every other type: characters, enums, pointers other than to char, and classes without
  /// to_json_value.
  template <typename T>
  // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): excludes JsonValue itself.
  requires(!detail::TakenAsValue<T>) JsonValue(T&& not_a_value)
  = delete;
  // NOLINTEND(google-explicit-constructor)

  JsonValue(const JsonValue& other);               ///< A deep copy. Only lists and objects allocate.
  JsonValue(JsonValue&& other) noexcept;           ///< Takes the value; `other` is then null.
  JsonValue& operator=(JsonValue other) noexcept;  ///< Copies, or moves from an rvalue.
  ~JsonValue();  ///< Allocates nothing; the stack use does not depend on depth.

  void swap(JsonValue& other) noexcept;  ///< Exchanges the two values.

  Kind kind() const noexcept;                                           ///< The kind of the value.
  bool is_null() const noexcept { return tag() == detail::Tag::null; }  ///< Whether the value is null.

  /// Whether the value is null, false, 0, 0.0, "", an empty list or an empty object.
  bool is_empty() const noexcept;

  /// The boolean.
  std::optional<bool> boolean() const noexcept {
    return tag() == detail::Tag::boolean ? std::optional(plain_.as.boolean) : std::nullopt;
  }
  /// The integer. A boolean counts as one: true is 1, false is 0.
  std::optional<Integer> integer() const noexcept;
  /// The integer as a T, or nothing when it is out of range.
  template <CountingInteger T>
  std::optional<T> integer() const noexcept {
    const std::optional<Integer> number = integer();
    return number ? number->to<T>() : std::nullopt;
  }
  /// The float.
  std::optional<double> floating() const noexcept {
    return tag() == detail::Tag::floating ? std::optional(plain_.as.floating) : std::nullopt;
  }
  /// The string's bytes.
  std::optional<std::string_view> string() const& noexcept {
    return detail::is_text(tag()) ? std::optional(text_.view()) : std::nullopt;
  }
  const Text* text() const& noexcept { return detail::is_text(tag()) ? &text_ : nullptr; }  ///< The string.
  /// The list.
  const JsonList* list() const& noexcept { return tag() == detail::Tag::list ? &list_ : nullptr; }
  /// The list, for changes.
  JsonList* list() & noexcept { return tag() == detail::Tag::list ? &list_ : nullptr; }
  /// The object.
  const JsonObject* object() const& noexcept { return tag() == detail::Tag::object ? &object_ : nullptr; }
  /// The object, for changes.
  JsonObject* object() & noexcept { return tag() == detail::Tag::object ? &object_ : nullptr; }
  /// The foreign value.
  const ForeignValue* foreign() const& noexcept {
    return tag() == detail::Tag::foreign ? &foreign_.value : nullptr;
  }
  std::optional<std::string_view> string() const&& = delete;
  const Text* text() const&& = delete;
  const JsonList* list() const&& = delete;
  const JsonObject* object() const&& = delete;
  const ForeignValue* foreign() const&& = delete;

  /// Follows keys into objects and positions into lists: at_path("results", 0, "fqn"). Returns a null value
  /// when a field or position is absent, or when a value on the way has another kind.
  template <typename... Steps>
  const JsonValue& at_path(const Steps&... steps) const& noexcept;
  template <typename... Steps>
  const JsonValue& at_path(const Steps&... steps) const&& = delete;

  /// Values are equal when their kinds are (1, 1.0 and true differ) and their contents are. Objects are equal
  /// when they have equal fields in the same order. A NaN equals every NaN; -0.0 does not equal 0.0. Foreign
  /// values are equal when they share one object.
  friend NEXT_STEPS_API bool operator==(const JsonValue& a, const JsonValue& b);
  /// Compares with the value that `b` would convert to, but converts and copies nothing. Ill-formed UTF-8
  /// equals no value. Throws std::invalid_argument when `b` is a null `const char*`.
  template <detail::ComparedWithValue T>
  friend bool operator==(const JsonValue& a, const T& b) {
    return a.equals(b);
  }
  /// Rejects types that must be converted first, such as std::vector.
  template <typename T>
  requires(!detail::ComparedWithValue<T> && !detail::OptionalValue<T> &&
           !std::derived_from<T, JsonValue>) friend bool
  operator==(const JsonValue&, const T&) = delete;

  /// Writes the compact text.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonValue& value);

 private:
  friend struct detail::ValueAccess;

  struct Plain {
    detail::Tag tag;
    union {
      std::nullptr_t nothing;
      bool boolean;
      std::int64_t integer;
      double floating;
    } as;
  };
  struct Foreign {
    detail::Tag tag;
    ForeignValue value;
  };

  // NOLINTNEXTLINE(clang-analyzer-core.uninitialized.UndefReturn): every constructor sets the tag.
  detail::Tag tag() const noexcept { return plain_.tag; }
  // Copies the 16 bytes of `other`; no reference count changes.
  void take_bits(const JsonValue& other) noexcept {
    std::memcpy(static_cast<void*>(this), static_cast<const void*>(&other), sizeof(JsonValue));
  }
  void copy_from(const JsonValue& other);
  void dispose() noexcept;

  bool equals(std::nullptr_t) const noexcept { return is_null(); }
  bool equals(std::same_as<bool> auto other) const noexcept { return boolean() == other; }
  bool equals(CountingInteger auto other) const noexcept {
    return kind() == Kind::integer && integer<decltype(other)>() == other;
  }
  bool equals(std::floating_point auto other) const noexcept {
    return equals_float(static_cast<double>(other));
  }
  bool equals_float(double other) const noexcept;
  template <detail::StringLike T>
  bool equals(const T& other) const {
    return string() == detail::view_of(other);
  }
  bool equals(const Text& other) const noexcept { return text() != nullptr && *text() == other; }
  bool equals(const Integer& other) const noexcept { return kind() == Kind::integer && integer() == other; }
  bool equals(const JsonList& other) const { return list() != nullptr && *list() == other; }
  bool equals(const JsonObject& other) const { return object() != nullptr && *object() == other; }
  bool equals(const ForeignValue& other) const noexcept {
    return foreign() != nullptr && *foreign() == other;
  }

  // All begin with the tag, so it can be read through any of them.
  union {
    Plain plain_;
    Text text_;  // a string, or the digits of an integer outside the range of std::int64_t
    JsonList list_;
    JsonObject object_;
    Foreign foreign_;
  };
};

static_assert(sizeof(JsonValue) == 16);

/// One field of an object.
struct JsonField {
  Text key;         ///< Unique in its object.
  JsonValue value;  ///< May be null.

  /// Writes the field as in the compact text of its object.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonField& field);
};

/// A field in the initializer list of an object.
struct JsonObject::FieldInit {
  TextArgument key;         ///< The key of the field.
  mutable JsonValue value;  ///< The object moves from it.
};

}  // namespace vantrex::values

#include "vantrex/values/json_value_inl.h"

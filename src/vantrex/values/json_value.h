// JsonValue, JsonList and JsonObject: the values of answers, arguments and
// steps.
//
// Purpose: a JSON-like value type. Objects keep the order in which fields were
// added, integers have no bound, strings are well-formed UTF-8, and a value of
// the host's own that JSON has no form for can be carried along. Reading never
// fails on a type: each accessor gives the value of its own kind or nothing,
// and an absent field reads as null. No operation recurses on depth.
//
// Ownership: value types. A list or an object owns the memory of its items and
// shares it with nobody. Moving takes constant time and moves no item; copying is
// deep, with one allocation for each list and object that holds something, and one
// more for an object of more than 32 fields. Long texts, foreign values
// and integers beyond 64 bits are immutable, and copies share them by count.
//
// Threads: like an int. Any number of threads may read or copy one value at
// once; a value that one thread changes must not be used by another meanwhile.
// Reading never changes anything, not even caches.
//
// Errors: what makes text of bytes throws InvalidUtf8, what allocates throws
// std::bad_alloc, and a list or an object of more than 2^31 items throws
// std::length_error. Every operation that throws leaves its object as it was.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <iosfwd>
#include <optional>
#include <string>
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

// The kinds of a value. An integer is one of any size, a float is a double.
enum class Kind : std::uint8_t { null, boolean, integer, floating, string, list, object, foreign };

namespace detail {
struct ValueAccess;
}

// An ordered list of values. Pointers, references and iterators into it are
// invalidated by everything that is not const.
class NEXT_STEPS_API JsonList {
 public:
  // What the standard library asks of a container.
  using value_type = JsonValue;
  using size_type = std::size_t;
  using difference_type = std::ptrdiff_t;
  using reference = const JsonValue&;
  using const_reference = const JsonValue&;
  using iterator = const JsonValue*;
  using const_iterator = const JsonValue*;

  JsonList() noexcept = default;

  // The list of the items of any sequence, tuple or pair.
  template <detail::Sequence Range>
  explicit JsonList(const Range& items);
  template <detail::FixedTuple Tuple>
  explicit JsonList(const Tuple& items);

  // The list of the given items: JsonList::of(1, "two", nullptr).
  template <typename... Items>
  static JsonList of(Items&&... items);

  // A copy is deep. A moved-from list is empty.
  JsonList(const JsonList& other);
  JsonList(JsonList&& other) noexcept
      : head_(std::exchange(other.head_, kEmpty)), items_(std::exchange(other.items_, nullptr)) {}
  JsonList& operator=(JsonList other) noexcept {
    std::swap(head_, other.head_);
    std::swap(items_, other.items_);
    return *this;
  }

  // Allocates nothing, and needs no more stack for deeper values.
  ~JsonList() {
    if (items_ != nullptr) dispose();
  }

  // The number of items, and whether it is 0.
  std::size_t size() const noexcept { return head_.size; }
  bool empty() const noexcept { return size() == 0; }

  // The items: for (const JsonValue& item : list).
  const JsonValue* begin() const noexcept { return items_; }
  const JsonValue* end() const noexcept;

  // The item at `position`, which must be less than size().
  const JsonValue& operator[](std::size_t position) const& noexcept;
  const JsonValue& operator[](std::size_t position) const&& = delete;
  // The same, to be changed.
  JsonValue& mutable_item(std::size_t position) & noexcept;

  // The last item of a list that is not empty.
  const JsonValue& back() const& noexcept;
  const JsonValue& back() const&& = delete;

  // What JsonValue::at_path gives, with one step at least.
  template <typename... Steps>
  const JsonValue& at_path(const detail::PathStep& first, const Steps&... rest) const& noexcept;
  template <typename... Steps>
  const JsonValue& at_path(const Steps&... steps) const&& = delete;

  // Adds `item` after the last one, in amortised constant time.
  void push_back(JsonValue item);
  // Keeps the first `count` items; does nothing when there are no more.
  void truncate(std::size_t count) noexcept;
  // Removes all items and keeps their room.
  void clear() noexcept { truncate(0); }
  // Makes room for `capacity` items in all.
  void reserve(std::size_t capacity);

  // Lists are equal when they hold equal items in the same order.
  friend NEXT_STEPS_API bool operator==(const JsonList& a, const JsonList& b);

  // Writes the compact text, for logs and the messages of tests.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonList& list);

 private:
  friend struct detail::ValueAccess;

  void dispose() noexcept;

  static constexpr detail::Head kEmpty{detail::Tag::list, 0, 0, 0};

  detail::Head head_ = kEmpty;
  JsonValue* items_ = nullptr;  // null until there is room for one
};

// String-keyed fields in the order in which they were added. Pointers,
// references and iterators into it are invalidated by everything that is not
// const.
class NEXT_STEPS_API JsonObject {
 public:
  // What the standard library asks of a container.
  using value_type = JsonField;
  using size_type = std::size_t;
  using difference_type = std::ptrdiff_t;
  using reference = const JsonField&;
  using const_reference = const JsonField&;
  using iterator = const JsonField*;
  using const_iterator = const JsonField*;

  struct FieldInit;

  JsonObject() noexcept = default;

  // JsonObject{{"fqn", fqn}, {"note", nullptr}}. A repeated key keeps its first
  // position and its last value.
  JsonObject(std::initializer_list<FieldInit> fields);

  // The fields of a string-keyed map, in the map's order.
  template <detail::StringKeyedMap Map>
  explicit JsonObject(const Map& map);

  // A copy is deep. A moved-from object is empty.
  JsonObject(const JsonObject& other);
  JsonObject(JsonObject&& other) noexcept
      : head_(std::exchange(other.head_, kEmpty)), fields_(std::exchange(other.fields_, nullptr)) {}
  JsonObject& operator=(JsonObject other) noexcept {
    std::swap(head_, other.head_);
    std::swap(fields_, other.fields_);
    return *this;
  }

  // Allocates nothing, and needs no more stack for deeper values.
  ~JsonObject() {
    if (fields_ != nullptr) dispose();
  }

  // The number of fields, and whether it is 0.
  std::size_t size() const noexcept { return head_.size; }
  bool empty() const noexcept { return size() == 0; }

  // The fields: for (const auto& [key, value] : object).
  const JsonField* begin() const noexcept { return fields_; }
  const JsonField* end() const noexcept;

  // The value of the field `key`, or null when there is none. Constant time on
  // average.
  const JsonValue* find(std::string_view key) const& noexcept;
  const JsonValue* find(std::string_view key) const&& = delete;
  const JsonValue* find(std::nullptr_t) const& = delete;
  // The same, to be changed.
  JsonValue* find_mutable(std::string_view key) & noexcept;
  JsonValue* find_mutable(std::nullptr_t) & = delete;

  // The value of the field `key`; an absent field reads as null.
  const JsonValue& operator[](std::string_view key) const& noexcept;
  const JsonValue& operator[](std::string_view key) const&& = delete;
  const JsonValue& operator[](std::nullptr_t) const& = delete;

  // What JsonValue::at_path gives, with one step at least.
  template <typename... Steps>
  const JsonValue& at_path(const detail::PathStep& first, const Steps&... rest) const& noexcept;
  template <typename... Steps>
  const JsonValue& at_path(const Steps&... steps) const&& = delete;

  // Whether there is a field `key`, be its value null or not.
  bool contains(std::string_view key) const noexcept { return find(key) != nullptr; }
  bool contains(std::nullptr_t) const = delete;

  // Replaces the value of the field `key` in its place, or adds the field after
  // the last one. Amortised constant time on average. Of bytes as a key it throws
  // InvalidUtf8 when they are no well-formed UTF-8, as append does.
  void set(const TextArgument& key, JsonValue value);

  // Adds a field after the last one without looking whether there is one of that
  // key, which the caller vouches for. Amortised constant time.
  void append(const TextArgument& key, JsonValue value);

  // Removes the field `key` and closes the gap; the other fields keep their
  // order. Gives the removed value, or nothing when there was no such field.
  // Takes time linear in the fields.
  std::optional<JsonValue> remove(std::string_view key) noexcept;
  std::optional<JsonValue> remove(std::nullptr_t) = delete;

  // Removes all fields and frees their memory.
  void clear() noexcept { *this = JsonObject(); }

  // Makes room for `capacity` fields in all.
  void reserve(std::size_t capacity);

  // Objects are equal when they hold equal fields in the same order.
  friend NEXT_STEPS_API bool operator==(const JsonObject& a, const JsonObject& b);

  // Writes the compact text, for logs and the messages of tests.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonObject& object);

 private:
  friend struct detail::ValueAccess;

  void dispose() noexcept;
  const JsonValue* find_short(std::string_view key) const noexcept;
  void append_new(Text key, JsonValue value);

  static constexpr detail::Head kEmpty{detail::Tag::object, 0, 0, 0};

  detail::Head head_ = kEmpty;
  JsonField* fields_ = nullptr;  // null until there is room for one
};

// One value of any kind.
class NEXT_STEPS_API JsonValue {
 public:
  // NOLINTBEGIN(google-explicit-constructor): what has a JSON form is a value.
  // Null.
  JsonValue() noexcept : JsonValue(nullptr) {}
  constexpr JsonValue(std::nullptr_t) noexcept : plain_{detail::Tag::null, {}} {}

  // A boolean, of nothing but a bool.
  template <std::same_as<bool> Boolean>
  JsonValue(Boolean value) noexcept : plain_{detail::Tag::boolean, {.boolean = value}} {}

  // An integer. Of a type of up to 64 signed bits it never fails.
  template <CountingInteger Number>
  JsonValue(Number value) : plain_{detail::Tag::integer, {.integer = static_cast<std::int64_t>(value)}} {
    if (!std::in_range<std::int64_t>(value)) *this = JsonValue(Integer(value));
  }
  JsonValue(Integer value) noexcept;

  // A float, rounded to a double.
  template <std::floating_point Number>
  JsonValue(Number value) noexcept
      : plain_{detail::Tag::floating, {.floating = static_cast<double>(value)}} {}

  // A string. Of bytes it throws InvalidUtf8 when they are no well-formed UTF-8.
  JsonValue(Text text) noexcept : text_(std::move(text)) {}
  JsonValue(const TextLiteral& text) noexcept : text_(text) {}
  JsonValue(std::string_view text) : text_(text) {}
  JsonValue(const std::string& text) : text_(text) {}
  // A null pointer is no text: it throws std::invalid_argument.
  JsonValue(const char* text) : text_(text) {}

  // A list, an object or a foreign value, taken over as it is.
  JsonValue(JsonList list) noexcept : list_(std::move(list)) {}
  JsonValue(JsonObject object) noexcept : object_(std::move(object)) {}
  JsonValue(const ForeignValue& value) noexcept : foreign_{detail::Tag::foreign, value} {}

  // The value that `JsonValue to_json_value(const T&)` returns. Declare it beside the
  // type T, in its namespace; T may be an enum. It wins over the constructors below.
  template <detail::HasToJsonValue T>
  JsonValue(const T& value) : JsonValue(JsonValue(to_json_value(value))) {}

  // The value of an optional, or null; the list of a sequence, a tuple or a pair; the
  // object of a string-keyed map. Throws as making what they hold does.
  template <typename T>
  requires std::is_constructible_v<JsonValue, const T&> JsonValue(const std::optional<T>& value)
      : JsonValue() {
    if (value) *this = JsonValue(*value);
  }
  template <detail::SequenceOfValues Range>
  JsonValue(const Range& items) : JsonValue(JsonList(items)) {}
  template <detail::TupleOfValues Tuple>
  JsonValue(const Tuple& items) : JsonValue(JsonList(items)) {}
  template <detail::MapOfValues Map>
  JsonValue(const Map& map) : JsonValue(JsonObject(map)) {}

  // Nothing else is a value: no pointer but to characters, no character, no enum and no
  // other class without to_json_value.
  template <typename T>
  // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): never for a JsonValue.
  requires(!detail::TakenAsValue<T>) JsonValue(T&& not_a_value)
  = delete;
  // NOLINTEND(google-explicit-constructor)

  // A copy is deep; that of a scalar allocates nothing. A moved-from value is null.
  JsonValue(const JsonValue& other) : JsonValue() {
    if (detail::may_own(other.tag())) {
      copy_from(other);
    } else {
      take_bits(other);
    }
  }
  JsonValue(JsonValue&& other) noexcept {
    take_bits(other);
    other.plain_.tag = detail::Tag::null;
  }
  JsonValue& operator=(JsonValue other) noexcept {
    swap(other);
    return *this;
  }

  // Allocates nothing, and needs no more stack for deeper values.
  ~JsonValue() {
    if (detail::may_own(tag())) dispose();
  }

  // Exchanges the two values.
  void swap(JsonValue& other) noexcept {
    JsonValue held(std::move(other));
    other.take_bits(*this);  // NOLINT(bugprone-use-after-move): replaces its bytes
    take_bits(held);
    held.plain_.tag = detail::Tag::null;
  }

  // The kind of the value, and whether it is null.
  Kind kind() const noexcept;
  bool is_null() const noexcept { return tag() == detail::Tag::null; }

  // Whether the value says nothing: null, false, 0, 0.0, "", an empty list or
  // an empty object.
  bool is_empty() const noexcept;

  // Each accessor gives the value when it is of that kind, else nothing. A boolean
  // qualifies as an integer, too: true is 1, false is 0. What points into the value
  // is valid until the value changes.
  std::optional<bool> boolean() const noexcept {
    return tag() == detail::Tag::boolean ? std::optional(plain_.as.boolean) : std::nullopt;
  }
  std::optional<Integer> integer() const noexcept;
  // The integer as a T, or nothing where T does not hold it.
  template <CountingInteger T>
  std::optional<T> integer() const noexcept {
    const std::optional<Integer> number = integer();
    return number ? number->to<T>() : std::nullopt;
  }
  std::optional<double> floating() const noexcept {
    return tag() == detail::Tag::floating ? std::optional(plain_.as.floating) : std::nullopt;
  }
  std::optional<std::string_view> string() const& noexcept {
    return detail::is_text(tag()) ? std::optional(text_.view()) : std::nullopt;
  }
  const Text* text() const& noexcept { return detail::is_text(tag()) ? &text_ : nullptr; }
  const JsonList* list() const& noexcept { return tag() == detail::Tag::list ? &list_ : nullptr; }
  JsonList* list() & noexcept { return tag() == detail::Tag::list ? &list_ : nullptr; }
  const JsonObject* object() const& noexcept { return tag() == detail::Tag::object ? &object_ : nullptr; }
  JsonObject* object() & noexcept { return tag() == detail::Tag::object ? &object_ : nullptr; }
  const ForeignValue* foreign() const& noexcept {
    return tag() == detail::Tag::foreign ? &foreign_.value : nullptr;
  }
  std::optional<std::string_view> string() const&& = delete;
  const Text* text() const&& = delete;
  const JsonList* list() const&& = delete;
  const JsonObject* object() const&& = delete;
  const ForeignValue* foreign() const&& = delete;

  // The value where the keys and positions lead to, from object to object and list to
  // list: at_path("results", 0, "fqn"). A null value where nothing is: no such field,
  // no such position, or a value of another kind on the way.
  template <typename... Steps>
  const JsonValue& at_path(const Steps&... steps) const& noexcept {
    const JsonValue* value = this;
    ((value = &detail::PathStep(steps).in(value->list(), value->object())), ...);
    return *value;
  }
  template <typename... Steps>
  const JsonValue& at_path(const Steps&... steps) const&& = delete;

  // Values are equal when they are of the same kind (1, 1.0 and true differ)
  // and hold the same: objects the same fields in the same order, floats the
  // same number as it is written (a NaN equals every NaN, and -0.0 is not 0.0),
  // foreign values the very same object.
  friend NEXT_STEPS_API bool operator==(const JsonValue& a, const JsonValue& b);

  // Writes the compact text, for logs and the messages of tests.
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
  // The 16 bytes of `other`, counting nothing.
  void take_bits(const JsonValue& other) noexcept {
    std::memcpy(static_cast<void*>(this), static_cast<const void*>(&other), sizeof(JsonValue));
  }
  void copy_from(const JsonValue& other);
  void dispose() noexcept;

  // All begin with the tag, so it may be read through any.
  union {
    Plain plain_;
    Text text_;  // also the digits of an integer beyond 64 bits, with a tag of their own
    JsonList list_;
    JsonObject object_;
    Foreign foreign_;
  };
};

static_assert(sizeof(JsonValue) == 16);

// One field of an object.
struct JsonField {
  Text key;         // unique in its object
  JsonValue value;  // any, null included

  // Writes the key and the value as they are in the text of the object.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonField& field);
};

// A field to build an object from; the object takes the value out of it.
struct JsonObject::FieldInit {
  TextArgument key;         // of the field
  mutable JsonValue value;  // moved out by the object
};

}  // namespace vantrex::values

#include "vantrex/values/json_value_inl.h"

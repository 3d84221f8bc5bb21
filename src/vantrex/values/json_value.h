// JsonValue, JsonList and JsonObject: the values of answers, arguments and steps.
//
// Purpose: a JSON-like value type. Objects keep insertion order, integers are unbounded, strings are
// well-formed UTF-8, and a ForeignValue carries any other C++ object. Reading never fails: an accessor
// returns nothing for a value of another kind; an absent field reads as null. No operation recurses on depth.
//
// Ownership: value types. A list or an object owns its items. Moving takes constant time and moves no item.
// Copying is deep: one allocation per non-empty list or object. Long texts, foreign values and integers
// outside the range of std::int64_t are immutable; copies share them by reference count.
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
#include "vantrex/values/text.h"

namespace vantrex::values {

struct NEXT_STEPS_API JsonField;

/// The kinds of a value. An integer has any size; a float is a double.
enum class Kind : std::uint8_t { null, boolean, integer, floating, string, list, object, foreign };

namespace detail {

/// What JsonList and JsonObject share: they own their items, in order, in one block of memory. Copies are
/// deep. Moving takes the items; the source is then empty.
///
/// Adding an item may move all items, and removing one moves those behind it. This and every assignment, swap
/// and move invalidates pointers, references and iterators into the container; a change within an item does
/// not.
template <typename Item>
class NEXT_STEPS_API Container {
 public:
  using value_type = Item;                 ///< The type of an item.
  using size_type = std::size_t;           ///< The type of size().
  using difference_type = std::ptrdiff_t;  ///< The type of the difference of two iterators.
  using reference = const Item&;           ///< Const: iterators only read.
  using const_reference = const Item&;     ///< The same type as `reference`.
  using iterator = const Item*;            ///< Const and contiguous.
  using const_iterator = const Item*;      ///< The same type as `iterator`.

  std::size_t size() const noexcept { return head_.size; }          ///< The number of items.
  bool empty() const noexcept { return size() == 0; }               ///< Whether there is no item.
  const Item* begin() const noexcept { return items_; }             ///< The first item.
  const Item* end() const noexcept { return items_ + head_.size; }  ///< One past the last item.

  void reserve(std::size_t capacity);  ///< Ensures memory for `capacity` items in total.
  void clear() noexcept;               ///< Removes all items; keeps the memory.

  /// Exchanges the items.
  friend void swap(Container& a, Container& b) noexcept {
    std::swap(a.head_, b.head_);
    std::swap(a.items_, b.items_);
  }

 protected:
  Container() noexcept = default;
  Container(const Container& other);
  Container(Container&& other) noexcept
      : head_(std::exchange(other.head_, kEmpty)), items_(std::exchange(other.items_, nullptr)) {}
  Container& operator=(const Container& other) {
    Container copy(other);
    *this = std::move(copy);
    return *this;
  }
  Container& operator=(Container&& other) noexcept {
    Container taken(std::move(other));
    swap(*this, taken);
    return *this;
  }
  ~Container() {
    if (items_ != nullptr) dispose();
  }

  // Ensures room for one more item. Amortised constant time.
  void make_room();

  Head head_ = kEmpty;
  Item* items_ = nullptr;  // null when no memory is allocated

 private:
  friend struct ValueAccess;

  static constexpr Head kEmpty{std::is_same_v<Item, JsonValue> ? Tag::list : Tag::object, 0, 0, 0};

  void dispose() noexcept;
};

}  // namespace detail

/// An ordered list of values.
class NEXT_STEPS_API JsonList : public detail::Container<JsonValue> {
 public:
  JsonList() noexcept = default;  ///< An empty list.

  /// The items of a sequence, such as a std::vector. Moves the items of a container that is moved.
  template <detail::Sequence Range>
  explicit JsonList(Range&& items);
  /// The elements of a tuple or a pair. Moves those of a tuple that is moved.
  template <detail::FixedTuple Tuple>
  explicit JsonList(Tuple&& items);

  /// The given items: JsonList::of(1, "two", nullptr).
  template <typename... Items>
  static JsonList of(Items&&... items);

  /// The item at `position`; null when there is none.
  template <CountingInteger Position>
  const JsonValue& operator[](Position position) const& noexcept;
  template <CountingInteger Position>
  const JsonValue& operator[](Position position) const&& = delete;

  /// The item at `position`, or a null pointer. A list that is not const gives an item that can be changed.
  const JsonValue* item(std::size_t position) const& noexcept;
  JsonValue* item(std::size_t position) & noexcept;  ///< The same.
  const JsonValue* item(std::size_t position) const&& = delete;

  void push_back(JsonValue item);             ///< Appends `item`. Amortised constant time.
  void truncate(std::size_t count) noexcept;  ///< Removes all items after the first `count`.

  /// Lists are equal when they have equal items in the same order.
  friend NEXT_STEPS_API bool operator==(const JsonList& a, const JsonList& b);

  /// Writes the compact text.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonList& list);
};

/// String-keyed fields in insertion order.
class NEXT_STEPS_API JsonObject : public detail::Container<JsonField> {
 public:
  struct FieldInit;

  JsonObject() noexcept = default;  ///< An empty object.

  /// The given fields: JsonObject{{"fqn", fqn}, {"note", nullptr}}. A repeated key keeps its first position
  /// and its last value. The values are moved, so a list with a name must be passed with std::move.
  JsonObject(std::initializer_list<FieldInit>&& fields);

  /// The fields of a string-keyed map, in the map's order. Moves the values of a map that is moved.
  template <detail::StringKeyedMap Map>
  explicit JsonObject(Map&& map);

  /// The value of the field `key`, or a null pointer when absent. An object that is not const gives a value
  /// that can be changed. Constant time on average.
  const JsonValue* find(StringArgument key) const& noexcept;
  JsonValue* find(StringArgument key) & noexcept;  ///< The same.
  const JsonValue* find(StringArgument key) const&& = delete;

  /// The value of the field `key`; an absent field reads as null.
  const JsonValue& operator[](StringArgument key) const& noexcept;
  const JsonValue& operator[](StringArgument key) const&& = delete;

  /// Whether there is a field `key`. Its value may be null.
  bool contains(StringArgument key) const noexcept { return find(key) != nullptr; }

  /// Replaces the value of the field `key`, or appends the field when absent. Amortised constant time on
  /// average. Throws InvalidUtf8 for an ill-formed key.
  void set(const TextArgument& key, JsonValue value);

  /// Appends a field without a lookup: `key` must be absent. Amortised constant time. Throws InvalidUtf8 for
  /// an ill-formed key.
  void append(const TextArgument& key, JsonValue value);

  /// Removes the field `key` and returns its value, or nothing when absent. The other fields keep their
  /// order. Linear in the number of fields.
  std::optional<JsonValue> remove(StringArgument key) noexcept;

  /// Objects are equal when they have equal fields in the same order.
  friend NEXT_STEPS_API bool operator==(const JsonObject& a, const JsonObject& b);

  /// Writes the compact text.
  friend NEXT_STEPS_API std::ostream& operator<<(std::ostream& out, const JsonObject& object);

 private:
  void append_new(Text key, JsonValue value);
};

/// One value of any kind. An accessor returns nothing for a value of another kind; the pointers and views
/// that it returns are valid until the value changes.
class NEXT_STEPS_API JsonValue {
 public:
  // NOLINTBEGIN(google-explicit-constructor): these conversions are the purpose of the class.
  /// Null. Explicit: as a value, {} would not say whether null, a list or an object is meant.
  explicit JsonValue() noexcept : JsonValue(nullptr) {}
  constexpr JsonValue(std::nullptr_t) noexcept : plain_{detail::Tag::null, {}} {}  ///< Null.

  /// A boolean. Only a bool converts to it.
  template <std::same_as<bool> Boolean>
  JsonValue(Boolean value) noexcept : plain_{detail::Tag::boolean, {.boolean = value}} {}

  /// An integer. Only an unsigned value of 2^63 or more allocates.
  template <CountingInteger Number>
  JsonValue(Number value) : integer_(value) {}
  JsonValue(const Integer& value) noexcept : integer_(value) {}  ///< An integer of any size.

  /// A float, converted to double.
  template <std::floating_point Number>
  JsonValue(Number value) noexcept
      : plain_{detail::Tag::floating, {.floating = static_cast<double>(value)}} {}

  JsonValue(Text text) noexcept : text_(std::move(text)) {}     ///< A string.
  JsonValue(const TextLiteral& text) noexcept : text_(text) {}  ///< A string.
  /// Any other string. Throws std::invalid_argument for a null pointer, InvalidUtf8 for ill-formed UTF-8.
  template <detail::StringValue T>
  JsonValue(const T& text) : text_(text) {}
  /// The text of a path. Throws InvalidUtf8 for ill-formed UTF-8.
  template <detail::PathLike Path>
  JsonValue(const Path& path) : text_(path.native()) {}

  JsonValue(JsonList list) noexcept : list_(std::move(list)) {}          ///< A list.
  JsonValue(JsonObject object) noexcept : object_(std::move(object)) {}  ///< An object.
  /// A foreign value, shared with `value`.
  JsonValue(const ForeignValue& value) noexcept : foreign_{detail::Tag::foreign, value} {}

  /// The result of `JsonValue to_json_value(const T&)`, which is declared in the namespace of T. T may be an
  /// enum. Takes precedence over the conversions below.
  template <detail::HasToJsonValue T>
  JsonValue(const T& value) : JsonValue(JsonValue(to_json_value(value))) {}

  /// The value of an optional, or null. Moves it when the optional is moved.
  template <detail::OptionalValue Optional>
  JsonValue(Optional&& value) : JsonValue() {
    if (value) *this = JsonValue(*std::forward<Optional>(value));
  }
  /// The list of a sequence's items, as JsonList makes it.
  template <detail::SequenceOfValues Range>
  JsonValue(Range&& items) : JsonValue(JsonList(std::forward<Range>(items))) {}
  /// The list of a tuple's or a pair's elements.
  template <detail::TupleOfValues Tuple>
  JsonValue(Tuple&& items) : JsonValue(JsonList(std::forward<Tuple>(items))) {}
  /// The object of a string-keyed map.
  template <detail::MapOfValues Map>
  JsonValue(Map&& map) : JsonValue(JsonObject(std::forward<Map>(map))) {}

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

  friend void swap(JsonValue& a, JsonValue& b) noexcept { a.swap_with(b); }  ///< Exchanges the two values.

  Kind kind() const noexcept;                                           ///< The kind of the value.
  bool is_null() const noexcept { return tag() == detail::Tag::null; }  ///< Whether the value is null.

  /// Whether the value is null, false, 0, 0.0, "", an empty list or an empty object.
  bool is_empty() const noexcept;

  /// The boolean.
  std::optional<bool> boolean() const noexcept {
    return tag() == detail::Tag::boolean ? std::optional(plain_.as.boolean) : std::nullopt;
  }
  /// The integer.
  std::optional<Integer> integer() const noexcept {
    return is_integer() ? std::optional(integer_) : std::nullopt;
  }
  /// The integer as a T, or nothing when it is out of range.
  template <CountingInteger T>
  std::optional<T> integer() const noexcept {
    return is_integer() ? integer_.to<T>() : std::nullopt;
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
  /// The list. A value that is not const gives a list that can be changed.
  const JsonList* list() const& noexcept { return tag() == detail::Tag::list ? &list_ : nullptr; }
  JsonList* list() & noexcept { return tag() == detail::Tag::list ? &list_ : nullptr; }  ///< The same.
  /// The object. A value that is not const gives an object that can be changed.
  const JsonObject* object() const& noexcept { return tag() == detail::Tag::object ? &object_ : nullptr; }
  JsonObject* object() & noexcept {
    return tag() == detail::Tag::object ? &object_ : nullptr;
  }  ///< The same.
  /// The foreign value.
  const ForeignValue* foreign() const& noexcept {
    return tag() == detail::Tag::foreign ? &foreign_.value : nullptr;
  }
  std::optional<std::string_view> string() const&& = delete;
  const Text* text() const&& = delete;
  const JsonList* list() const&& = delete;
  const JsonObject* object() const&& = delete;
  const ForeignValue* foreign() const&& = delete;

  /// The field `key` of an object, or the item at `position` of a list: value["results"][0]["fqn"]. Null when
  /// absent, and when this value is of another kind.
  const JsonValue& operator[](StringArgument key) const& noexcept;
  const JsonValue& operator[](StringArgument key) const&& = delete;
  template <CountingInteger Position>
  const JsonValue& operator[](Position position) const& noexcept;  ///< The same.
  template <CountingInteger Position>
  const JsonValue& operator[](Position position) const&& = delete;

  /// Values are equal when their kinds are (1, 1.0 and true differ) and their contents are. Objects are equal
  /// when they have equal fields in the same order. A NaN equals every NaN; -0.0 does not equal 0.0. Foreign
  /// values are equal when they share one object.
  friend NEXT_STEPS_API bool operator==(const JsonValue& a, const JsonValue& b);
  /// Compares with the value that `b` would convert to, but converts and copies nothing. Ill-formed UTF-8
  /// equals no value. Throws std::invalid_argument when `b` is a null `const char*`.
  template <detail::PlainValue T>
  friend bool operator==(const JsonValue& a, const T& b) {
    return a.equals(b);
  }
  /// Rejects types that must be converted first, such as std::vector.
  template <typename T>
  requires(!detail::PlainValue<T> && !detail::OptionalValue<T> &&
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
      double floating;
    } as;
  };
  struct Foreign {
    detail::Tag tag;
    ForeignValue value;
  };

  // NOLINTNEXTLINE(clang-analyzer-core.uninitialized.UndefReturn): every constructor sets the tag.
  detail::Tag tag() const noexcept { return plain_.tag; }
  bool is_integer() const noexcept {
    return tag() == detail::Tag::integer || tag() == detail::Tag::big_integer;
  }
  // Copies the 16 bytes of `other`; no reference count changes.
  void take_bits(const JsonValue& other) noexcept {
    std::memcpy(static_cast<void*>(this), static_cast<const void*>(&other), sizeof(JsonValue));
  }
  void swap_with(JsonValue& other) noexcept;
  template <typename Value, typename Visit>
  static void visit_owner(Value& value, Visit visit);
  void copy_from(const JsonValue& other);
  void dispose() noexcept;

  bool equals(std::nullptr_t) const noexcept { return is_null(); }
  bool equals(std::same_as<bool> auto other) const noexcept { return boolean() == other; }
  bool equals(CountingInteger auto other) const noexcept { return integer<decltype(other)>() == other; }
  bool equals(std::floating_point auto other) const noexcept {
    return equals_float(static_cast<double>(other));
  }
  bool equals(const detail::StringLike auto& other) const { return string() == detail::view_of(other); }
  bool equals(const Text& other) const noexcept { return text() != nullptr && *text() == other; }
  bool equals(const Integer& other) const noexcept { return integer() == other; }
  bool equals(const JsonList& other) const { return list() != nullptr && *list() == other; }
  bool equals(const JsonObject& other) const { return object() != nullptr && *object() == other; }
  bool equals(const ForeignValue& other) const noexcept {
    return foreign() != nullptr && *foreign() == other;
  }
  bool equals_float(double other) const noexcept;

  // All begin with the tag, so it can be read through any of them.
  union {
    Plain plain_;
    Integer integer_;
    Text text_;
    JsonList list_;
    JsonObject object_;
    Foreign foreign_;
  };
};

static_assert(sizeof(JsonValue) == 16);

/// One field of an object.
struct NEXT_STEPS_API JsonField {
  Text key;         ///< Unique in its object.
  JsonValue value;  ///< May be null.
};

/// A field in the initializer list of an object.
struct JsonObject::FieldInit {
  TextArgument key;         ///< The key of the field.
  mutable JsonValue value;  ///< The object moves from it.
};

}  // namespace vantrex::values

#include "vantrex/values/json_value_inl.h"

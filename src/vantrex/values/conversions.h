// Concepts of the types that convert to a JsonValue.
//
// Internal: other folders use the constructors in json_value.h.
#pragma once

#include <concepts>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>  // also gives std::begin, without the streams of <iterator>
#include <type_traits>
#include <utility>

#include "vantrex/values/foreign.h"
#include "vantrex/values/integer.h"
#include "vantrex/values/text.h"

namespace vantrex::values {

class JsonList;
class JsonObject;
class JsonValue;

namespace detail {

/// Is one of `Bases`, or derives from one.
template <typename T, typename... Bases>
concept IsA = (std::derived_from<T, Bases> || ...);

/// A value of a single kind: is compared with a JsonValue as it is.
template <typename T>
concept PlainValue = std::same_as<T, std::nullptr_t> || std::same_as<T, bool> || CountingInteger<T> ||
    std::floating_point<T> || StringLike<T> || IsA<T, Text, Integer, JsonList, JsonObject, ForeignValue>;

/// Has a function to_json_value(const T&), found by argument-dependent lookup, that returns a JsonValue.
template <typename T>
concept HasToJsonValue = requires(const T& value) {
  { to_json_value(value) } -> std::convertible_to<JsonValue>;
};

/// A string; has no to_json_value.
template <typename T>
concept StringValue = StringLike<T> && !HasToJsonValue<T>;

/// A path such as std::filesystem::path.
template <typename T>
concept PathLike = requires(const T& path) {
  { path.native() } -> std::same_as<const std::string&>;
}
&&!HasToJsonValue<T>;

/// The iterator of a const T.
template <typename T>
using IteratorOf = decltype(std::begin(std::declval<const T&>()));

/// Has begin() and end() when const.
template <typename T>
concept Iterable = std::input_iterator<IteratorOf<T>> && requires(const T& items) {
  std::begin(items) != std::end(items);
};

/// The type that an item converts from: its reference type, or its value type when iteration gives a proxy.
template <typename T>
using ItemOf = std::conditional_t<std::is_reference_v<std::iter_reference_t<IteratorOf<T>>>,
                                  std::iter_reference_t<IteratorOf<T>>, std::iter_value_t<IteratorOf<T>>>;

/// Has begin() and end(), like std::vector, std::array and std::span. Is no string, no map and no range of
/// itself. T may be a reference, here and below.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept Sequence = !IsA<Plain, JsonList, JsonObject> && !StringLike<Plain> && !requires {
  typename Plain::mapped_type;
}
&&Iterable<Plain> && !std::same_as<std::iter_value_t<IteratorOf<Plain>>, Plain>;

/// Has std::tuple_size, like std::tuple and std::pair. Is no range: std::array is a Sequence.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept FixedTuple = requires {
  std::tuple_size<Plain>::value;
}
&&!Iterable<Plain>;

/// Has begin() and end(), a mapped_type, and a key_type that is a string, like std::map.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept StringKeyedMap = requires {
  typename Plain::mapped_type;
  requires StringLike<typename Plain::key_type> || std::same_as<typename Plain::key_type, Text>;
}
&&Iterable<Plain>;

/// Whether the items of a `T&&` may be moved: it is a container that owns them, and not an lvalue.
template <typename T>
inline constexpr bool kGivesItems = !std::is_reference_v<T> && !std::is_const_v<T> && requires {
  typename T::allocator_type;
};

/// Whether every element of the tuple converts to JsonValue.
template <typename Tuple, std::size_t... kAt>
constexpr bool holds_values(std::index_sequence<kAt...> /*positions*/) {
  return (std::is_constructible_v<JsonValue, const std::tuple_element_t<kAt, Tuple>&> && ...);
}

/// A sequence whose items convert to JsonValue; has no to_json_value.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept SequenceOfValues =
    Sequence<T> && !HasToJsonValue<Plain> && std::is_constructible_v<JsonValue, ItemOf<Plain>>;
/// A tuple whose elements convert to JsonValue; has no to_json_value.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept TupleOfValues = FixedTuple<T> && !HasToJsonValue<Plain> &&
                        holds_values<Plain>(std::make_index_sequence<std::tuple_size<Plain>::value>());
/// A string-keyed map whose mapped type converts to JsonValue; has no to_json_value.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept MapOfValues = StringKeyedMap<T> && !HasToJsonValue<Plain> &&
                      std::is_constructible_v<JsonValue, const typename Plain::mapped_type&>;

/// Deduces the T of std::optional<T>, or of a class derived from it, when T converts to JsonValue.
template <typename T>
requires std::is_constructible_v<JsonValue, const T&>
void take_optional(const std::optional<T>& value);
/// Is a std::optional of a type that converts to JsonValue, or derives from one; has no to_json_value.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept OptionalValue = requires(const Plain& value) {
  take_optional(value);
}
&&!HasToJsonValue<Plain>;

/// Has a conversion operator to JsonValue. std::is_convertible cannot test this: it would test the
/// constructors of JsonValue, which depend on this concept.
template <typename T>
concept ConvertsItself = requires(T&& value) {
  std::forward<T>(value).operator JsonValue();
};

/// Is accepted by a constructor of JsonValue.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept TakenAsValue = PlainValue<Plain> || std::derived_from<Plain, JsonValue> || HasToJsonValue<Plain> ||
    PathLike<Plain> || OptionalValue<Plain> || SequenceOfValues<Plain> || TupleOfValues<Plain> ||
    MapOfValues<Plain> || ConvertsItself<T>;

}  // namespace detail
}  // namespace vantrex::values

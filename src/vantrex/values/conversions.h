// Concepts of the types that convert to a JsonValue.
//
// Internal: other folders use the constructors in json_value.h.
#pragma once

#include <concepts>
#include <cstddef>
#include <optional>
#include <ranges>
#include <string_view>
#include <tuple>
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

/// JsonValue, JsonList or JsonObject.
template <typename T>
concept OwnType = std::same_as<T, JsonValue> || std::same_as<T, JsonList> || std::same_as<T, JsonObject>;

/// Has a function to_json_value(const T&), found by argument-dependent lookup, that returns a JsonValue.
template <typename T>
concept HasToJsonValue = requires(const T& value) {
  { to_json_value(value) } -> std::convertible_to<JsonValue>;
};

/// A string; has no to_json_value.
template <typename T>
concept StringValue = StringLike<T> && !HasToJsonValue<T>;

/// Has begin() and end(), like std::vector, std::array and std::span. Is no string, no map and no range of
/// itself.
template <typename T>
concept Sequence = !OwnType<T> && !StringLike<T> && std::ranges::input_range<const T> && !requires {
  typename T::mapped_type;
}
&&!std::same_as<std::ranges::range_value_t<const T>, T>;

/// Has std::tuple_size, like std::tuple and std::pair. Is no range: std::array is a Sequence.
template <typename T>
concept FixedTuple = requires {
  std::tuple_size<T>::value;
}
&&!std::ranges::range<const T>;

/// Has begin() and end(), a mapped_type, and a key_type that converts to std::string_view, like std::map.
template <typename T>
concept StringKeyedMap = requires {
  typename T::mapped_type;
  requires StringLike<typename T::key_type>;
}
&&std::ranges::input_range<const T>;

/// The type that an item converts from: its reference type, or its value type when iteration gives a proxy.
template <typename Range>
using ItemOf =
    std::conditional_t<std::is_reference_v<std::ranges::range_reference_t<const Range>>,
                       std::ranges::range_reference_t<const Range>, std::ranges::range_value_t<const Range>>;

/// Whether every element of the tuple converts to JsonValue.
template <typename Tuple, std::size_t... kAt>
constexpr bool holds_values(std::index_sequence<kAt...> /*positions*/) {
  return (std::is_constructible_v<JsonValue, const std::tuple_element_t<kAt, Tuple>&> && ...);
}

/// A sequence whose items convert to JsonValue; has no to_json_value.
template <typename T>
concept SequenceOfValues = Sequence<T> && !HasToJsonValue<T> && std::is_constructible_v<JsonValue, ItemOf<T>>;
/// A tuple whose elements convert to JsonValue; has no to_json_value.
template <typename T>
concept TupleOfValues = FixedTuple<T> && !HasToJsonValue<T> &&
                        holds_values<T>(std::make_index_sequence<std::tuple_size<T>::value>());
/// A string-keyed map whose mapped type converts to JsonValue; has no to_json_value.
template <typename T>
concept MapOfValues = StringKeyedMap<T> && !HasToJsonValue<T> &&
                      std::is_constructible_v<JsonValue, const typename T::mapped_type&>;

/// Deduces the T of std::optional<T>, or of a class derived from it, when T converts to JsonValue.
template <typename T>
requires std::is_constructible_v<JsonValue, const T&>
void take_optional(const std::optional<T>& value);
/// Is a std::optional of a type that converts to JsonValue, or derives from one.
template <typename T>
concept OptionalValue = requires(const T& value) {
  take_optional(value);
};

/// Converts implicitly to one of `Parameters`.
template <typename T, typename... Parameters>
concept ConvertibleToOneOf = (std::is_convertible_v<T, Parameters> || ...);

/// Has a conversion operator to JsonValue. std::is_convertible cannot test this: it would test the
/// constructors of JsonValue, which depend on this concept.
template <typename T>
concept ConvertsItself = requires(T&& value) {
  std::forward<T>(value).operator JsonValue();
}
|| requires(T&& value) {
  std::forward<T>(value).operator JsonValue&();
}
|| requires(T&& value) {
  std::forward<T>(value).operator const JsonValue&();
};

/// Is accepted by a constructor of JsonValue. T is an lvalue reference for an lvalue.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept TakenAsValue =
    std::derived_from<Plain, JsonValue> || HasToJsonValue<Plain> || std::same_as<Plain, bool> ||
    CountingInteger<Plain> || std::floating_point<Plain> || OptionalValue<Plain> || SequenceOfValues<Plain> ||
    TupleOfValues<Plain> || MapOfValues<Plain> || StringLike<Plain> ||
    ConvertibleToOneOf<T, std::nullptr_t, Text, Integer, JsonList, JsonObject, ForeignValue> ||
    ConvertsItself<T>;

/// Is compared with a JsonValue without a conversion.
template <typename T>
concept ComparedWithValue = std::same_as<T, std::nullptr_t> || std::same_as<T, bool> || CountingInteger<T> ||
    std::floating_point<T> || StringLike<T> || std::derived_from<T, Text> || std::derived_from<T, Integer> ||
    std::derived_from<T, JsonList> || std::derived_from<T, JsonObject> || std::derived_from<T, ForeignValue>;

}  // namespace detail
}  // namespace vantrex::values

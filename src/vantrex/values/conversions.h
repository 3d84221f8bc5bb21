// Which types become a JsonValue by a template of its constructors.
//
// Internal: code outside this folder sees the constructors of json_value.h only.
#pragma once

#include <concepts>
#include <cstddef>
#include <optional>
#include <ranges>
#include <string>
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

template <typename T>
concept StringLike = std::convertible_to<const T&, std::string_view>;

template <typename T>
concept OwnType = std::same_as<T, JsonValue> || std::same_as<T, JsonList> || std::same_as<T, JsonObject>;

// A type with a function to_json_value(const T&) in its namespace.
template <typename T>
concept HasToJsonValue = requires(const T& value) {
  { to_json_value(value) } -> std::convertible_to<JsonValue>;
};

// std::vector, std::array, std::span and their like; neither text nor map, nor
// a range of itself.
template <typename T>
concept Sequence = !OwnType<T> && !StringLike<T> && std::ranges::input_range<const T> && !requires {
  typename T::mapped_type;
}
&&!std::same_as<std::ranges::range_value_t<const T>, T>;

// std::tuple and std::pair; std::array is a sequence.
template <typename T>
concept FixedTuple = requires {
  std::tuple_size<T>::value;
}
&&!std::ranges::range<const T>;

template <typename T>
concept StringKeyedMap = requires {
  typename T::mapped_type;
  requires StringLike<typename T::key_type>;
}
&&std::ranges::input_range<const T>;

// What an item of a sequence is read as: itself, but the value that a proxy stands for.
template <typename Range>
using ItemOf =
    std::conditional_t<std::is_reference_v<std::ranges::range_reference_t<const Range>>,
                       std::ranges::range_reference_t<const Range>, std::ranges::range_value_t<const Range>>;

template <typename Tuple, std::size_t... kAt>
constexpr bool holds_values(std::index_sequence<kAt...> /*positions*/) {
  return (std::is_constructible_v<JsonValue, const std::tuple_element_t<kAt, Tuple>&> && ...);
}

// The same, of what are values themselves, and with no form that the type chose.
template <typename T>
concept SequenceOfValues = Sequence<T> && !HasToJsonValue<T> && std::is_constructible_v<JsonValue, ItemOf<T>>;
template <typename T>
concept TupleOfValues = FixedTuple<T> && !HasToJsonValue<T> &&
                        holds_values<T>(std::make_index_sequence<std::tuple_size<T>::value>());
template <typename T>
concept MapOfValues = StringKeyedMap<T> && !HasToJsonValue<T> &&
                      std::is_constructible_v<JsonValue, const typename T::mapped_type&>;

// std::optional and what derives from it.
template <typename T>
requires std::is_constructible_v<JsonValue, const T&>
void take_optional(const std::optional<T>& value);
template <typename T>
concept OptionalValue = requires(const T& value) {
  take_optional(value);
};

template <typename T, typename... Parameters>
concept ConvertibleToOneOf = (std::is_convertible_v<T, Parameters> || ...);

// What converts itself to a value. Asking whether it is convertible would ask the
// constructors of JsonValue, which ask this.
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

// What some constructor of JsonValue takes; `T` is a reference for an lvalue.
template <typename T, typename Plain = std::remove_cvref_t<T>>
concept TakenAsValue = std::derived_from<Plain, JsonValue> || HasToJsonValue<Plain> ||
    std::same_as<Plain, bool> || CountingInteger<Plain> || std::floating_point<Plain> ||
    OptionalValue<Plain> || SequenceOfValues<Plain> || TupleOfValues<Plain> || MapOfValues<Plain> ||
    ConvertibleToOneOf<T, std::nullptr_t, std::string_view, const std::string&, const char*, Text, Integer,
                       JsonList, JsonObject, ForeignValue> || ConvertsItself<T>;

}  // namespace detail
}  // namespace vantrex::values

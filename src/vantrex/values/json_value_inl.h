// The inline definitions of json_value.h, which includes this file.
#pragma once

#include <tuple>
#include <utility>

#include "vantrex/values/json_value.h"

namespace vantrex::values {

namespace detail {

/// The null value that stands for an absent one.
NEXT_STEPS_API extern const JsonValue kAbsent;

inline const JsonValue& value_or_absent(const JsonValue* value) noexcept {
  return value == nullptr ? kAbsent : *value;
}

}  // namespace detail

template <detail::Sequence Range>
JsonList::JsonList(Range&& items) {
  if constexpr (requires { std::size(items); }) reserve(std::size(items));
  for (auto&& item : items) {
    if constexpr (detail::kGivesItems<Range> && std::is_reference_v<decltype(*std::begin(items))>) {
      push_back(JsonValue(std::move(item)));
    } else {
      push_back(JsonValue(static_cast<detail::ItemOf<std::remove_cvref_t<Range>>>(item)));
    }
  }
}

template <detail::FixedTuple Tuple>
JsonList::JsonList(Tuple&& items)
    : JsonList(std::apply([](auto&&... each) { return of(std::forward<decltype(each)>(each)...); },
                          std::forward<Tuple>(items))) {}

template <typename... Items>
JsonList JsonList::of(Items&&... items) {
  JsonList list;
  list.reserve(sizeof...(items));
  (list.push_back(JsonValue(std::forward<Items>(items))), ...);
  return list;
}

inline const JsonValue* JsonList::item(std::size_t position) const& noexcept {
  return position < size() ? items_ + position : nullptr;
}
inline JsonValue* JsonList::item(std::size_t position) & noexcept {
  return position < size() ? items_ + position : nullptr;
}
template <CountingInteger Position>
const JsonValue& JsonList::operator[](Position position) const& noexcept {
  return detail::value_or_absent(
      std::in_range<std::size_t>(position) ? item(static_cast<std::size_t>(position)) : nullptr);
}

template <detail::StringKeyedMap Map>
JsonObject::JsonObject(Map&& map) {
  if constexpr (requires { std::size(map); }) reserve(std::size(map));
  for (auto&& [key, value] : map) {
    if constexpr (detail::kGivesItems<Map>) {
      set(key, JsonValue(std::move(value)));
    } else {
      set(key, JsonValue(value));
    }
  }
}

inline const JsonValue& JsonObject::operator[](StringArgument key) const& noexcept {
  return detail::value_or_absent(find(key));
}

inline JsonValue::JsonValue(const JsonValue& other) : JsonValue() {
  if (detail::may_own(other.tag())) {
    copy_from(other);
  } else {
    take_bits(other);
  }
}
inline JsonValue::JsonValue(JsonValue&& other) noexcept {
  take_bits(other);
  other.plain_.tag = detail::Tag::null;
}
inline JsonValue& JsonValue::operator=(JsonValue other) noexcept {
  swap_with(other);
  return *this;
}
inline JsonValue::~JsonValue() {
  if (detail::may_own(tag())) dispose();
}
inline void JsonValue::swap_with(JsonValue& other) noexcept {
  JsonValue held(std::move(other));
  other.take_bits(*this);  // NOLINT(bugprone-use-after-move): replaces its bytes
  take_bits(held);
  held.plain_.tag = detail::Tag::null;
}

inline const JsonValue& JsonValue::operator[](StringArgument key) const& noexcept {
  return object() == nullptr ? detail::kAbsent : (*object())[key];
}
template <CountingInteger Position>
const JsonValue& JsonValue::operator[](Position position) const& noexcept {
  return list() == nullptr ? detail::kAbsent : (*list())[position];
}

}  // namespace vantrex::values

// The parts of json_value.h that need every type complete. Include that one.
#pragma once

#include <cassert>
#include <ranges>
#include <tuple>

#include "vantrex/values/json_value.h"

namespace vantrex::values {

// These delegate, so that a conversion that throws half-way gives back the rest.
template <detail::Sequence Range>
JsonList::JsonList(const Range& items) : JsonList() {
  if constexpr (std::ranges::sized_range<const Range>) reserve(std::ranges::size(items));
  for (auto&& item : items) push_back(JsonValue(static_cast<detail::ItemOf<Range>>(item)));
}

template <detail::FixedTuple Tuple>
JsonList::JsonList(const Tuple& items)
    : JsonList(std::apply([](const auto&... each) { return of(each...); }, items)) {}

template <typename... Items>
JsonList JsonList::of(Items&&... items) {
  JsonList list;
  list.reserve(sizeof...(items));
  (list.push_back(JsonValue(std::forward<Items>(items))), ...);
  return list;
}

template <detail::StringKeyedMap Map>
JsonObject::JsonObject(const Map& map) : JsonObject() {
  if constexpr (std::ranges::sized_range<const Map>) reserve(std::ranges::size(map));
  for (const auto& [key, value] : map) set(std::string_view(key), JsonValue(value));
}

inline const JsonValue* JsonList::end() const noexcept {
  return items_ + head_.size;
}
inline const JsonValue& JsonList::operator[](std::size_t position) const& noexcept {
  assert(position < size());
  return items_[position];
}
inline JsonValue& JsonList::mutable_item(std::size_t position) & noexcept {
  assert(position < size());
  return items_[position];
}
inline const JsonValue& JsonList::back() const& noexcept {
  assert(!empty());
  return items_[head_.size - 1];
}
template <typename... Steps>
const JsonValue& JsonList::at_path(const detail::PathStep& first, const Steps&... rest) const& noexcept {
  return first.in(this, nullptr).at_path(rest...);
}

inline const JsonField* JsonObject::end() const noexcept {
  return fields_ + head_.size;
}
template <typename... Steps>
const JsonValue& JsonObject::at_path(const detail::PathStep& first, const Steps&... rest) const& noexcept {
  return first.in(nullptr, this).at_path(rest...);
}

}  // namespace vantrex::values

// The parts of json_value.h that need every type complete. Include that one.
#pragma once

#include <cassert>

#include "vantrex/values/json_value.h"

namespace vantrex::values {

// These delegate, so that a conversion that throws half-way gives back the rest.
template <detail::Sequence Range>
JsonList::JsonList(const Range& items) : JsonList() {
  if constexpr (std::ranges::sized_range<const Range>) reserve(std::ranges::size(items));
  for (auto&& item : items) push_back(JsonValue(static_cast<std::ranges::range_value_t<const Range>>(item)));
}

template <typename... Items>
JsonList::JsonList(const std::tuple<Items...>& items)
    : JsonList(std::apply([](const Items&... each) { return of(each...); }, items)) {}

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
  for (const auto& [key, value] : map) set(Text(std::string_view(key)), JsonValue(value));
}

inline const JsonValue* JsonList::begin() const noexcept {
  return block_ == nullptr ? nullptr : block_->items<JsonValue>();
}
inline const JsonValue* JsonList::end() const noexcept {
  return begin() + size();
}

inline const JsonValue& JsonList::operator[](std::size_t position) const& noexcept {
  return begin()[position];
}

inline void JsonList::push_back(JsonValue item) {
  if (!detail::has_own_room(block_, size() + 1)) make_room(size() + 1);
  new (block_->items<JsonValue>() + block_->size) JsonValue(std::move(item));
  ++block_->size;
}

inline const JsonField* JsonObject::begin() const noexcept {
  return block_ == nullptr ? nullptr : block_->items<JsonField>();
}
inline const JsonField* JsonObject::end() const noexcept {
  return begin() + size();
}

inline const JsonValue* JsonObject::find(std::string_view key) const& noexcept {
  const JsonField* field = field_of(detail::WantedKey(key));
  return field == nullptr ? nullptr : &field->value;
}
inline JsonValue* JsonObject::find_mutable(std::string_view key) & {
  return mutable_value_of(detail::WantedKey(key));
}
inline const JsonValue& JsonObject::operator[](std::string_view key) const& noexcept {
  return value_of(detail::WantedKey(key));
}

inline void JsonObject::append(Text key, JsonValue value) {
  assert(!contains(key.view()));
  if (!detail::has_own_room(block_, size() + 1)) make_room(size() + 1);
  new (block_->items<JsonField>() + block_->size) JsonField{std::move(key), std::move(value)};
  ++block_->size;
  if (block_->index != nullptr) index_last();
}

}  // namespace vantrex::values

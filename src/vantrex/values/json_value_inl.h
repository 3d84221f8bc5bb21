// The inline definitions of json_value.h, which includes this file.
#pragma once

#include <cassert>
#include <ranges>
#include <tuple>
#include <utility>

#include "vantrex/values/json_value.h"

namespace vantrex::values {

inline JsonList::JsonList(JsonList&& other) noexcept
    : head_(std::exchange(other.head_, kEmpty)), items_(std::exchange(other.items_, nullptr)) {}
inline JsonList& JsonList::operator=(JsonList other) noexcept {
  std::swap(head_, other.head_);
  std::swap(items_, other.items_);
  return *this;
}
inline JsonList::~JsonList() {
  if (items_ != nullptr) dispose();
}

// The constructors from a sequence and from a map delegate to the default constructor, so that the destructor
// runs when an item throws.
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

inline JsonObject::JsonObject(JsonObject&& other) noexcept
    : head_(std::exchange(other.head_, kEmpty)), fields_(std::exchange(other.fields_, nullptr)) {}
inline JsonObject& JsonObject::operator=(JsonObject other) noexcept {
  std::swap(head_, other.head_);
  std::swap(fields_, other.fields_);
  return *this;
}
inline JsonObject::~JsonObject() {
  if (fields_ != nullptr) dispose();
}

template <detail::StringKeyedMap Map>
JsonObject::JsonObject(const Map& map) : JsonObject() {
  if constexpr (std::ranges::sized_range<const Map>) reserve(std::ranges::size(map));
  for (const auto& [key, value] : map) set(std::string_view(key), JsonValue(value));
}

inline const JsonField* JsonObject::end() const noexcept {
  return fields_ + head_.size;
}
template <typename... Steps>
const JsonValue& JsonObject::at_path(const detail::PathStep& first, const Steps&... rest) const& noexcept {
  return first.in(nullptr, this).at_path(rest...);
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
  swap(other);
  return *this;
}
inline JsonValue::~JsonValue() {
  if (detail::may_own(tag())) dispose();
}
inline void JsonValue::swap(JsonValue& other) noexcept {
  JsonValue held(std::move(other));
  other.take_bits(*this);  // NOLINT(bugprone-use-after-move): replaces its bytes
  take_bits(held);
  held.plain_.tag = detail::Tag::null;
}

template <typename... Steps>
const JsonValue& JsonValue::at_path(const Steps&... steps) const& noexcept {
  const JsonValue* value = this;
  ((value = &detail::PathStep(steps).in(value->list(), value->object())), ...);
  return *value;
}

}  // namespace vantrex::values

#include <algorithm>
#include <cassert>
#include <new>
#include <utility>

#include "vantrex/values/block.h"
#include "vantrex/values/json_value.h"

namespace vantrex::values {

using detail::FieldIndex;

namespace {

constinit const JsonValue kAbsent(nullptr);

}  // namespace

// The fields are compared among themselves alone, and their block is exactly large
// enough.
JsonObject::JsonObject(std::initializer_list<FieldInit> fields) : JsonObject() {
  reserve(fields.size());
  for (const FieldInit& field : fields) {
    Text key = field.key.text();
    if (JsonValue* present = find_mutable(key.view())) {
      *present = std::move(field.value);
    } else {
      append_new(std::move(key), std::move(field.value));
    }
  }
}

void JsonObject::dispose() noexcept {
  detail::destroy(*this);
}

const JsonValue* JsonObject::find(std::string_view key) const& noexcept {
  if (size_ > FieldIndex::kUnindexedFields) {
    const std::size_t position = detail::header_of(fields_).index->find(key, fields_, size_);
    return position == size_ ? nullptr : &fields_[position].value;
  }
  for (const auto& field : *this) {
    if (field.key.view() == key) return &field.value;
  }
  return nullptr;
}

JsonValue* JsonObject::find_mutable(std::string_view key) & noexcept {
  return const_cast<JsonValue*>(find(key));  // NOLINT(*-const-cast): of this object, which may be changed
}

const JsonValue& JsonObject::operator[](std::string_view key) const& noexcept {
  const JsonValue* value = find(key);
  return value == nullptr ? kAbsent : *value;
}

void JsonObject::set(const TextArgument& key, JsonValue value) {
  if (JsonValue* present = find_mutable(key.view())) {
    *present = std::move(value);
  } else {
    append_new(key.text(), std::move(value));
  }
}

void JsonObject::append(const TextArgument& key, JsonValue value) {
  assert(!contains(key.view()));
  append_new(key.text(), std::move(value));
}

void JsonObject::append_new(Text key, JsonValue value) {
  detail::make_room(*this);
  auto* field = new (fields_ + size_) JsonField{std::move(key), std::move(value)};
  if (FieldIndex* index = detail::header_of(fields_).index) index->add(field->key, size_);
  ++size_;
}

std::optional<JsonValue> JsonObject::remove(std::string_view key) noexcept {
  JsonValue* found = find_mutable(key);
  if (found == nullptr) return std::nullopt;
  auto* field =
      std::find_if(fields_, fields_ + size_, [&](const JsonField& each) { return &each.value == found; });
  std::optional<JsonValue> removed(std::move(*found));
  std::move(field + 1, fields_ + size_, field);
  fields_[--size_].~JsonField();
  detail::rebuild_index(*this);
  return removed;
}

void JsonObject::reserve(std::size_t capacity) {
  detail::reserve(*this, capacity);
}

}  // namespace vantrex::values

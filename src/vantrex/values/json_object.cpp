#include <algorithm>
#include <cassert>
#include <new>
#include <utility>

#include "vantrex/values/block.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/value_access.h"

namespace vantrex::values {

using detail::FieldIndex;

namespace {

constinit const JsonValue kAbsent(nullptr);

}  // namespace

// A few fields are compared pairwise: the new field acts as the sentinel of its own search.
JsonObject::JsonObject(std::initializer_list<FieldInit> fields) : JsonObject() {
  reserve(fields.size());
  if (fields.size() > FieldIndex::kUnindexedFields) {
    for (const FieldInit& field : fields) set(field.key, std::move(field.value));
    return;
  }
  for (const FieldInit& field : fields) {
    auto* const last = new (fields_ + head_.size) JsonField{field.key.text(), std::move(field.value)};
    JsonField* first = fields_;
    while (last->key != first->key) ++first;
    if (first == last) {
      ++head_.size;
    } else {
      first->value = std::move(last->value);
      last->~JsonField();
    }
  }
}

void JsonObject::dispose() noexcept {
  detail::destroy(*this);
}

const JsonValue* JsonObject::find(std::string_view key) const& noexcept {
  if (head_.size > FieldIndex::kUnindexedFields) {
    const std::size_t position = detail::header_of(fields_).index->find(key, fields_, head_.size);
    return position == head_.size ? nullptr : &fields_[position].value;
  }
  if (key.size() <= detail::kInlineCapacity) return find_short(key);
  for (const auto& field : *this) {
    if (field.key.view() == key) return &field.value;
  }
  return nullptr;
}

// A short key is stored inside its text, and its tag gives the size. Most other keys are rejected by the tag.
const JsonValue* JsonObject::find_short(std::string_view key) const noexcept {
  const detail::Tag tag = detail::inline_tag(key.size());
  for (const auto& field : *this) {
    const detail::TextBits& bits = detail::ValueAccess::bits(field.key);
    if (bits.tag() == tag && bits.view() == key) return &field.value;
  }
  return nullptr;
}

JsonValue* JsonObject::find_mutable(std::string_view key) & noexcept {
  return const_cast<JsonValue*>(find(key));  // NOLINT(*-const-cast): this object is not const
}

const JsonValue& JsonObject::operator[](std::string_view key) const& noexcept {
  const JsonValue* value = find(key);
  return value == nullptr ? kAbsent : *value;
}

const JsonValue& detail::PathStep::in(const JsonList* list, const JsonObject* object) const noexcept {
  if (key_) return object == nullptr ? kAbsent : (*object)[*key_];
  return list == nullptr || position_ >= list->size() ? kAbsent : (*list)[position_];
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
  auto* field = new (fields_ + head_.size) JsonField{std::move(key), std::move(value)};
  if (FieldIndex* index = detail::header_of(fields_).index) index->add(field->key, head_.size);
  ++head_.size;
}

std::optional<JsonValue> JsonObject::remove(std::string_view key) noexcept {
  JsonValue* found = find_mutable(key);
  if (found == nullptr) return std::nullopt;
  auto* field = std::find_if(fields_, fields_ + head_.size,
                             [&](const JsonField& each) { return &each.value == found; });
  std::optional<JsonValue> removed(std::move(*found));
  std::move(field + 1, fields_ + head_.size, field);
  fields_[--head_.size].~JsonField();
  detail::rebuild_index(*this);
  return removed;
}

void JsonObject::reserve(std::size_t capacity) {
  detail::reserve(*this, capacity);
}

}  // namespace vantrex::values

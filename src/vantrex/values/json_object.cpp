#include <algorithm>
#include <utility>

#include "vantrex/values/block_memory.h"
#include "vantrex/values/field_index.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/snapshot.h"

namespace vantrex::values {

JsonObject::JsonObject(std::initializer_list<FieldInit> fields) : JsonObject() {
  reserve(fields.size());
  for (const FieldInit& field : fields) set(field.key, std::move(field.value));
}

JsonObject::JsonObject(const JsonObject& other) {
  if (other.block_ == nullptr) return;
  if (detail::share(other.block_)) {
    block_ = other.block_;
  } else {
    *this = snapshot(other, NullFields::keep);
  }
}

void JsonObject::dispose() noexcept {
  detail::give_up<JsonField>(block_);
}

// Has the block be one to append to, with room for `capacity` items in all.
void JsonObject::make_room(std::size_t capacity) {
  block_ = detail::roomy_block<JsonField>(block_, capacity);
}

// Has the block be one whose items can be changed.
void JsonObject::make_changeable() {
  make_room(size());
  detail::keep_borrowed<JsonField>(block_);
}

const JsonField* JsonObject::field_of(const detail::WantedKey& key) const noexcept {
  if (block_ == nullptr) return nullptr;
  if (block_->index != nullptr || !key.is_short()) return long_field_of(key.view());
  for (const JsonField& field : *this) {
    if (key.matches(field.key)) return &field;
  }
  return nullptr;
}

// The field of a key that is long, or of an object that is.
const JsonField* JsonObject::long_field_of(std::string_view key) const noexcept {
  if (block_->index != nullptr) {
    const std::size_t position = block_->index->find(key, begin(), size());
    return position == size() ? nullptr : begin() + position;
  }
  const auto* found =
      std::find_if(begin(), end(), [&](const JsonField& field) { return field.key.view() == key; });
  return found == end() ? nullptr : found;
}

const JsonValue& JsonObject::value_of(const detail::WantedKey& key) const noexcept {
  static const JsonValue absent;
  const JsonField* field = field_of(key);
  return field == nullptr ? absent : field->value;
}

JsonValue* JsonObject::mutable_value_of(const detail::WantedKey& key) {
  const JsonField* field = field_of(key);
  if (field == nullptr) return nullptr;
  const auto position = field - begin();
  make_changeable();
  return &block_->items<JsonField>()[position].value;
}

void JsonObject::set(Text key, JsonValue value) {
  if (JsonValue* present = mutable_value_of(detail::WantedKey(key))) {
    *present = std::move(value);
    return;
  }
  append(std::move(key), std::move(value));
}

// Adds the last field to the index.
void JsonObject::index_last() noexcept {
  const std::size_t last = size() - 1;
  block_->index->add(begin()[last].key, last);
}

std::optional<JsonValue> JsonObject::remove(std::string_view key) {
  const JsonField* field = field_of(detail::WantedKey(key));
  if (field == nullptr) return std::nullopt;
  const auto position = field - begin();
  make_changeable();
  auto* fields = block_->items<JsonField>();
  std::optional<JsonValue> removed(std::move(fields[position].value));
  std::move(fields + position + 1, fields + block_->size, fields + position);
  fields[--block_->size].~JsonField();
  if (block_->index != nullptr) block_->index->rebuild(fields, block_->size);
  return removed;
}

void JsonObject::reserve(std::size_t capacity) {
  if (capacity > size()) make_room(capacity);
}

}  // namespace vantrex::values

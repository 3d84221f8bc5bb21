#include <algorithm>
#include <cassert>
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

void JsonObject::make_changeable(std::size_t capacity) {
  if (block_ != nullptr && block_->arena == nullptr && capacity <= block_->capacity) return;
  block_ = detail::changeable_block<JsonField>(block_, capacity);
}

std::size_t JsonObject::position_of(std::string_view key) const noexcept {
  if (block_ == nullptr) return 0;
  if (block_->index != nullptr) return block_->index->find(key, begin(), size());
  const JsonField* found =
      key.size() <= detail::kInlineCapacity
          ? std::find_if(begin(), end(),
                         [wanted = detail::ShortKey(key)](const JsonField& field) {
                           return wanted.matches(field.key);
                         })
          : std::find_if(begin(), end(), [&](const JsonField& field) { return field.key.view() == key; });
  return static_cast<std::size_t>(found - begin());
}

const JsonValue* JsonObject::find(std::string_view key) const& noexcept {
  const std::size_t position = position_of(key);
  return position == size() ? nullptr : &begin()[position].value;
}

JsonValue* JsonObject::find_mutable(std::string_view key) & {
  const std::size_t position = position_of(key);
  if (position == size()) return nullptr;
  make_changeable(size());
  return &block_->items<JsonField>()[position].value;
}

const JsonValue& JsonObject::operator[](std::string_view key) const& noexcept {
  static const JsonValue absent;
  const JsonValue* value = find(key);
  return value == nullptr ? absent : *value;
}

void JsonObject::set(Text key, JsonValue value) {
  if (JsonValue* present = find_mutable(key.view())) {
    *present = std::move(value);
    return;
  }
  append(std::move(key), std::move(value));
}

void JsonObject::append(Text key, JsonValue value) {
  assert(!contains(key.view()));
  make_changeable(size() + 1);
  new (block_->items<JsonField>() + block_->size) JsonField{std::move(key), std::move(value)};
  if (block_->index != nullptr)
    block_->index->add(block_->items<JsonField>()[block_->size].key, block_->size);
  ++block_->size;
}

std::optional<JsonValue> JsonObject::remove(std::string_view key) {
  const std::size_t position = position_of(key);
  if (position == size()) return std::nullopt;
  make_changeable(size());
  auto* fields = block_->items<JsonField>();
  std::optional<JsonValue> removed(std::move(fields[position].value));
  std::move(fields + position + 1, fields + block_->size, fields + position);
  fields[--block_->size].~JsonField();
  if (block_->index != nullptr) block_->index->rebuild(fields, block_->size);
  return removed;
}

void JsonObject::reserve(std::size_t capacity) {
  if (capacity > size()) make_changeable(capacity);
}

}  // namespace vantrex::values

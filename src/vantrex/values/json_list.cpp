#include <algorithm>
#include <utility>

#include "vantrex/values/block_memory.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/snapshot.h"

namespace vantrex::values {

JsonList::JsonList(const JsonList& other) {
  if (other.block_ == nullptr) return;
  if (detail::share(other.block_)) {
    block_ = other.block_;
  } else {
    *this = snapshot(other, NullFields::keep);
  }
}

void JsonList::dispose() noexcept {
  detail::give_up<JsonValue>(block_);
}

// Has the block be one to append to, with room for `capacity` items in all.
void JsonList::make_room(std::size_t capacity) {
  block_ = detail::roomy_block<JsonValue>(block_, capacity);
}

// Has the block be one whose items can be changed.
void JsonList::make_changeable() {
  make_room(size());
  detail::keep_borrowed<JsonValue>(block_);
}

JsonValue& JsonList::mutable_item(std::size_t position) & {
  make_changeable();
  return block_->items<JsonValue>()[position];
}

void JsonList::truncate(std::size_t count) {
  if (count >= size()) return;
  make_changeable();
  while (block_->size > count) block_->items<JsonValue>()[--block_->size].~JsonValue();
}

void JsonList::reserve(std::size_t capacity) {
  if (capacity > size()) make_room(capacity);
}

}  // namespace vantrex::values

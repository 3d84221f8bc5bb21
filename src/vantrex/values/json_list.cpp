#include <new>
#include <utility>

#include "vantrex/values/block.h"
#include "vantrex/values/json_value.h"

namespace vantrex::values {

void JsonList::dispose() noexcept {
  detail::destroy(*this);
}

void JsonList::push_back(JsonValue item) {
  detail::make_room(*this);
  new (items_ + head_.size) JsonValue(std::move(item));
  ++head_.size;
}

void JsonList::truncate(std::size_t count) noexcept {
  while (head_.size > count) items_[--head_.size].~JsonValue();
}

void JsonList::reserve(std::size_t capacity) {
  detail::reserve(*this, capacity);
}

}  // namespace vantrex::values

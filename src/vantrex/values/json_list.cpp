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
  new (items_ + size_) JsonValue(std::move(item));
  ++size_;
}

void JsonList::truncate(std::size_t count) noexcept {
  while (size_ > count) items_[--size_].~JsonValue();
}

void JsonList::reserve(std::size_t capacity) {
  detail::reserve(*this, capacity);
}

}  // namespace vantrex::values

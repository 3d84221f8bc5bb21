#include "vantrex/values/block.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "vantrex/values/value_access.h"

namespace vantrex::values::detail {

namespace {

constexpr std::size_t kMaxItems = std::size_t{1} << 31;
constexpr std::size_t kMinCapacity = 4;

// The exclusive or of both halves of the 128-bit product. Each bit of the factors affects all bits of the
// result.
std::uint64_t mixed(std::uint64_t a, std::uint64_t b) noexcept {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

// The blocks of a tree that are still to be destroyed, as a linked list through their headers.
class DyingBlocks {
 public:
  void add(void* items, std::size_t size) noexcept {
    if (items == nullptr) return;
    BlockHeader& header = header_of(items);
    header.capacity = static_cast<std::uint32_t>(size);
    header.next_dying = std::exchange(next_, &header);
  }

  void destroy_all() noexcept {
    while (next_ != nullptr) {
      BlockHeader* const header = std::exchange(next_, next_->next_dying);
      header->holds_fields ? destroy_items<JsonField>(*header) : destroy_items<JsonValue>(*header);
      ::operator delete(header);
    }
  }

 private:
  template <typename Item>
  void destroy_items(BlockHeader& header) noexcept {
    auto* const items = reinterpret_cast<Item*>(&header + 1);
    for (Item* item = items; item != items + header.capacity; ++item) destroy(*item);
  }

  void destroy(JsonField& field) noexcept {
    field.key.~Text();
    destroy(field.value);
  }
  void destroy(JsonValue& value) noexcept {
    if (JsonList* list = value.list()) {
      add(ValueAccess::items(*list), list->size());
    } else if (JsonObject* object = value.object()) {
      add(ValueAccess::items(*object), object->size());
    } else {
      value.~JsonValue();
    }
  }

  BlockHeader* next_ = nullptr;
};

}  // namespace

void FieldIndex::rebuild(std::size_t size) const noexcept {
  std::fill_n(slots_, mask_ + 1, 0);
  for (std::size_t position = 0; position < size; ++position) add(position);
}

std::size_t FieldIndex::hash(std::string_view key) const noexcept {
  constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;
  std::uint64_t state =
      mixed(reinterpret_cast<std::uintptr_t>(slots_) ^ kMultiplier, key.size() ^ kMultiplier);
  while (!key.empty()) {
    std::uint64_t word = 0;
    const std::size_t taken = std::min(key.size(), sizeof word);
    std::memcpy(&word, key.data(), taken);
    state = mixed(state ^ word, kMultiplier);
    key.remove_prefix(taken);
  }
  return state;
}

std::size_t FieldIndex::find(std::string_view key, std::size_t none) const noexcept {
  for (std::size_t slot = hash(key) & mask_; slots_[slot] != 0; slot = (slot + 1) & mask_) {
    const std::size_t position = slots_[slot] - 1;
    if (fields_[position].key.view() == key) return position;
  }
  return none;
}

void FieldIndex::add(std::size_t position) const noexcept {
  std::size_t slot = hash(fields_[position].key.view()) & mask_;
  while (slots_[slot] != 0) slot = (slot + 1) & mask_;
  slots_[slot] = static_cast<std::uint32_t>(position + 1);
}

template <typename Item>
Item* new_block(std::size_t capacity) {
  if (capacity > kMaxItems) throw std::length_error("a list or an object holds at most 2^31 items");
  constexpr bool kHoldsFields = std::is_same_v<Item, JsonField>;
  const std::size_t index_bytes = kHoldsFields ? FieldIndex::bytes(capacity) : 0;
  void* memory = ::operator new(sizeof(BlockHeader) + capacity * sizeof(Item) + index_bytes);
  auto* header = new (memory) BlockHeader{static_cast<std::uint32_t>(capacity), kHoldsFields, nullptr};
  return reinterpret_cast<Item*>(header + 1);
}

// Moves the items by copying their bytes.
template <typename Item>
void Container<Item>::reserve(std::size_t capacity) {
  if (capacity == 0 || (items_ != nullptr && capacity <= header_of(items_).capacity)) return;
  Item* const block = new_block<Item>(capacity);
  if (items_ != nullptr) {
    std::memcpy(static_cast<void*>(block), static_cast<const void*>(items_), size() * sizeof(Item));
    ::operator delete(&header_of(items_));
  }
  items_ = block;
  rebuild_index(items_, size());
}

template <typename Item>
void Container<Item>::make_room() {
  const std::size_t needed = size() + 1;
  if (items_ == nullptr) return reserve(kMinCapacity);
  const std::size_t capacity = header_of(items_).capacity;
  if (needed <= capacity) return;
  reserve(std::max(needed, std::min(2 * capacity, kMaxItems)));
}

template <typename Item>
void Container<Item>::clear() noexcept {
  while (!empty()) items_[--head_.size].~Item();
  rebuild_index(items_, 0);
}

template <typename Item>
void Container<Item>::dispose() noexcept {
  DyingBlocks dying;
  dying.add(items_, size());
  dying.destroy_all();
}

template JsonValue* new_block(std::size_t);
template JsonField* new_block(std::size_t);
template class Container<JsonValue>;
template class Container<JsonField>;

}  // namespace vantrex::values::detail

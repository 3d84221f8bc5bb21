#include "vantrex/values/block.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "vantrex/values/value_access.h"

namespace vantrex::values::detail {

namespace {

constexpr std::size_t kMaxItems = std::size_t{1} << 31;
constexpr std::size_t kMinCapacity = 4;

struct RawDelete {
  void operator()(void* memory) const noexcept { ::operator delete(memory); }
};

template <typename Item>
Item* new_block(std::size_t capacity) {
  if (capacity > kMaxItems) throw std::length_error("a list or an object holds at most 2^31 items");
  std::unique_ptr<void, RawDelete> memory(::operator new(sizeof(BlockHeader) + capacity * sizeof(Item)));
  FieldIndex* index = nullptr;
  if (std::is_same_v<Item, JsonField> && capacity > FieldIndex::kUnindexedFields)
    index = FieldIndex::create(capacity);
  auto* header = new (memory.release()) BlockHeader{static_cast<std::uint32_t>(capacity), 0, {index}};
  return reinterpret_cast<Item*>(header + 1);
}

// The blocks of a tree that are still to be destroyed, as two linked lists through their headers.
class DyingBlocks {
 public:
  template <typename Container>
  void add(Container& container) noexcept {
    auto* items = std::exchange(ValueAccess::items(container), nullptr);
    if (items == nullptr) return;
    BlockHeader& header = header_of(items);
    if (header.index != nullptr) ::operator delete(header.index);
    header.dying_size = static_cast<std::uint32_t>(container.size());
    BlockHeader*& chain = std::is_same_v<Container, JsonList> ? lists_ : objects_;
    header.next_dying = std::exchange(chain, &header);
  }

  void destroy_all() noexcept {
    while (lists_ != nullptr || objects_ != nullptr) {
      if (lists_ != nullptr) {
        destroy<JsonValue>(lists_);
      } else {
        destroy<JsonField>(objects_);
      }
    }
  }

 private:
  template <typename Item>
  void destroy(BlockHeader*& chain) noexcept {
    BlockHeader* header = std::exchange(chain, chain->next_dying);
    auto* items = reinterpret_cast<Item*>(header + 1);
    for (Item* item = items; item != items + header->dying_size; ++item) destroy(*item);
    ::operator delete(header);
  }

  void destroy(JsonField& field) noexcept {
    field.key.~Text();
    destroy(field.value);
  }
  void destroy(JsonValue& value) noexcept {
    if (JsonList* list = value.list()) {
      add(*list);
    } else if (JsonObject* object = value.object()) {
      add(*object);
    } else {
      value.~JsonValue();
    }
  }

  BlockHeader* lists_ = nullptr;
  BlockHeader* objects_ = nullptr;
};

}  // namespace

template <typename Container>
void allocate(Container& container, std::size_t capacity) {
  auto*& items = ValueAccess::items(container);
  items = new_block<std::remove_reference_t<decltype(*items)>>(capacity);
}

template <typename Container>
void reserve(Container& container, std::size_t capacity) {
  auto*& items = ValueAccess::items(container);
  if (capacity == 0 || (items != nullptr && capacity <= header_of(items).capacity)) return;
  Container roomy;
  allocate(roomy, capacity);
  auto*& new_items = ValueAccess::items(roomy);
  if (items != nullptr) {
    std::memcpy(static_cast<void*>(new_items), static_cast<const void*>(items),
                container.size() * sizeof(*items));
  }
  std::swap(items, new_items);  // the size of `roomy` is still 0, so it destroys no items
  if constexpr (std::is_same_v<Container, JsonObject>) rebuild_index(container);
}

void rebuild_index(JsonObject& object) noexcept {
  JsonField* fields = ValueAccess::items(object);
  if (FieldIndex* index = header_of(fields).index) index->rebuild(fields, object.size());
}

template <typename Container>
void make_room(Container& container) {
  const auto* items = ValueAccess::items(container);
  const std::size_t needed = container.size() + 1;
  if (items == nullptr) return reserve(container, kMinCapacity);
  const std::size_t capacity = header_of(items).capacity;
  if (needed <= capacity) return;
  // An object grows beyond kUnindexedFields, where it needs an index, only when it must.
  const std::size_t limit = std::is_same_v<Container, JsonObject> && needed <= FieldIndex::kUnindexedFields
                                ? FieldIndex::kUnindexedFields
                                : kMaxItems;
  reserve(container, std::max(needed, std::min(2 * capacity, limit)));
}

template <typename Container>
void destroy(Container& container) noexcept {
  DyingBlocks dying;
  dying.add(container);
  dying.destroy_all();
}

template void allocate(JsonList&, std::size_t);
template void allocate(JsonObject&, std::size_t);
template void reserve(JsonList&, std::size_t);
template void reserve(JsonObject&, std::size_t);
template void make_room(JsonList&);
template void make_room(JsonObject&);
template void destroy(JsonList&) noexcept;
template void destroy(JsonObject&) noexcept;

}  // namespace vantrex::values::detail

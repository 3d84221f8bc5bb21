#include "vantrex/values/block_memory.h"

#include <algorithm>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>

#include "vantrex/values/arena.h"
#include "vantrex/values/field_index.h"
#include "vantrex/values/value_access.h"

namespace vantrex::values::detail {

namespace {

constexpr std::size_t kFewestItems = 4;

struct RawDelete {
  void operator()(void* memory) const noexcept { ::operator delete(memory); }
};

// Gives back the memory of a block whose items are gone.
void delete_memory(ContainerBlock* block) noexcept {
  ::operator delete(block->index);
  ::operator delete(block);
}

template <typename Item>
void rebuild_index(ContainerBlock* block) noexcept {
  if constexpr (std::is_same_v<Item, JsonField>) {
    if (block->index != nullptr) block->index->rebuild(block->items<JsonField>(), block->size);
  }
}

// Gives counts of arenas back, those that follow each other on the same arena
// all at once: most of a block's items refer into one.
class ArenaReleases {
 public:
  ArenaReleases() noexcept = default;
  ArenaReleases(const ArenaReleases&) = delete;
  ArenaReleases& operator=(const ArenaReleases&) = delete;
  ~ArenaReleases() { release_held(); }

  void add(Arena* arena) noexcept {
    if (arena != arena_) {
      release_held();
      arena_ = arena;
      counts_ = 0;
    }
    ++counts_;
  }

 private:
  void release_held() noexcept {
    if (arena_ != nullptr) arena_->release(counts_);
  }

  Arena* arena_ = nullptr;
  std::size_t counts_ = 0;
};

// Blocks that still have to be taken apart, chained through themselves.
class DyingBlocks {
 public:
  template <typename Item>
  void add(ContainerBlock* block) noexcept {
    if (block->index != nullptr) ::operator delete(block->index);
    ContainerBlock*& chain = std::is_same_v<Item, JsonField> ? objects_ : lists_;
    block->next_dying = std::exchange(chain, block);
  }

  void take_apart_all() noexcept {
    while (lists_ != nullptr || objects_ != nullptr) {
      if (lists_ != nullptr) {
        take_apart<JsonValue>(lists_);
      } else {
        take_apart<JsonField>(objects_);
      }
    }
  }

 private:
  template <typename Item>
  void take_apart(ContainerBlock*& chain) noexcept {
    ContainerBlock* block = std::exchange(chain, chain->next_dying);
    Item* item = block->items<Item>();
    Item* const end = item + block->size;
    if (block->lender != nullptr) {
      item += block->lender->size;
      releases_.add(block->lender->arena);
    }
    for (; item != end; ++item) {
      if constexpr (std::is_same_v<Item, JsonField>) {
        if (owns_block(ValueAccess::tag(item->key))) take_apart_text(item->key);
        if (owns_block(ValueAccess::tag(item->value))) take_apart_value(item->value);
      } else {
        if (owns_block(ValueAccess::tag(*item))) take_apart_value(*item);
      }
    }
    ::operator delete(block);
  }

  void take_apart_text(Text& text) noexcept {
    if (Arena* arena = ValueAccess::arena(text)) {
      releases_.add(arena);
    } else {
      text.~Text();
    }
  }

  void take_apart_value(JsonValue& value) noexcept {
    if (Arena* arena = ValueAccess::arena(value)) {
      releases_.add(arena);
    } else if (!ValueAccess::has_own_block(value)) {
      value.~JsonValue();
    } else if (ValueAccess::tag(value) == Tag::list) {
      add<JsonValue>(ValueAccess::block(value));
    } else {
      add<JsonField>(ValueAccess::block(value));
    }
  }

  ArenaReleases releases_;
  ContainerBlock* lists_ = nullptr;
  ContainerBlock* objects_ = nullptr;
};

}  // namespace

template <typename Item>
ContainerBlock* new_block(std::size_t capacity) {
  if (capacity > kMostItems) throw std::length_error("a list or an object holds at most 2^31 items");
  std::unique_ptr<void, RawDelete> memory(::operator new(sizeof(ContainerBlock) + capacity * sizeof(Item)));
  FieldIndex* index = nullptr;
  if constexpr (std::is_same_v<Item, JsonField>) {
    if (capacity > FieldIndex::kUnindexedFields) {
      index = FieldIndex::create(::operator new(FieldIndex::bytes_for(capacity)), capacity, nullptr, 0);
    }
  }
  return new (memory.release())
      ContainerBlock{nullptr, {index}, 0, {static_cast<std::uint32_t>(capacity)}, {.lender = nullptr}};
}

template <typename Item>
ContainerBlock* roomy_block(ContainerBlock* block, std::size_t capacity) {
  if (block == nullptr) return new_block<Item>(std::max(capacity, kFewestItems));
  if (has_own_room(block, capacity)) return block;

  // A block that outgrows its own memory doubles. One that is copied out of an
  // arena seldom gets more than a few items, and would pay for a field index.
  const bool own = block->arena == nullptr;
  const std::size_t grown = own ? std::size_t{2} * block->capacity : block->size + kFewestItems;
  ContainerBlock* roomy = new_block<Item>(std::max(capacity, std::min(grown, kMostItems)));
  std::memcpy(static_cast<void*>(roomy->items<Item>()), static_cast<const void*>(block->items<Item>()),
              block->size * sizeof(Item));
  roomy->size = block->size;
  roomy->lender = own ? block->lender : block;
  rebuild_index<Item>(roomy);
  if (own) delete_memory(block);
  return roomy;
}

template <typename Item>
void keep_borrowed(ContainerBlock* block) noexcept {
  if (block->lender == nullptr) return;
  Arena* const arena = block->lender->arena;
  std::size_t counts = 0;
  const auto count = [&](const auto& value) {
    if (!owns_block(ValueAccess::tag(value))) return;
    if (ValueAccess::arena(value) == arena) {
      ++counts;
    } else {
      ValueAccess::count(value);
    }
  };
  const Item* const end = block->items<Item>() + block->lender->size;
  for (const Item* item = block->items<Item>(); item != end; ++item) {
    if constexpr (std::is_same_v<Item, JsonField>) {
      count(item->key);
      count(item->value);
    } else {
      count(*item);
    }
  }
  block->lender = nullptr;
  arena->retain(counts);
  arena->release();
}

bool share(const ContainerBlock* block) noexcept {
  if (block->arena == nullptr) return false;
  block->arena->retain();
  return true;
}

template <typename Item>
void give_up(ContainerBlock* block) noexcept {
  if (block->arena != nullptr) {
    block->arena->release();
    return;
  }
  DyingBlocks dying;
  dying.add<Item>(block);
  dying.take_apart_all();
}

template ContainerBlock* new_block<JsonValue>(std::size_t);
template ContainerBlock* new_block<JsonField>(std::size_t);
template ContainerBlock* roomy_block<JsonValue>(ContainerBlock*, std::size_t);
template ContainerBlock* roomy_block<JsonField>(ContainerBlock*, std::size_t);
template void keep_borrowed<JsonValue>(ContainerBlock*) noexcept;
template void keep_borrowed<JsonField>(ContainerBlock*) noexcept;
template void give_up<JsonValue>(ContainerBlock*) noexcept;
template void give_up<JsonField>(ContainerBlock*) noexcept;

}  // namespace vantrex::values::detail

// The memory behind a list or an object: a header, followed by its items.
//
// A block is either of its own, held by exactly one list or object that may
// change it, or lies in an arena together with the whole tree it belongs to.
// What lies in an arena never changes; lists and objects outside refer to it by
// counting the arena, and copy the one block they are asked to change. Until an
// item of it is changed, the copy only borrows the items, by one count for all.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vantrex::values {

class Arena;

namespace detail {

class FieldIndex;

struct ContainerBlock {
  Arena* arena;  // null for a block of its own
  union {
    FieldIndex* index;           // of an object with many fields, else null
    ContainerBlock* next_dying;  // while a tree is taken apart
  };
  std::uint32_t size;
  union {
    std::uint32_t capacity;  // of a block of its own
    // Of a block in an arena: whether a field in it, at any depth, has a marked key.
    std::uint32_t holds_marked;
  };
  union {
    // Of a block in an arena: the bytes of its compact text, or 0 when they were
    // not measured.
    std::size_t text_bytes;
    // Of a block of its own: the one in an arena whose items its first ones are,
    // uncounted, or null. That arena is counted once.
    const ContainerBlock* lender;
  };

  template <typename Item>
  Item* items() noexcept {
    return reinterpret_cast<Item*>(this + 1);
  }
  template <typename Item>
  const Item* items() const noexcept {
    return reinterpret_cast<const Item*>(this + 1);
  }
};

// Whether `block` is of its own, with room for `capacity` items.
inline bool has_own_room(const ContainerBlock* block, std::size_t capacity) noexcept {
  return block != nullptr && block->arena == nullptr && capacity <= block->capacity;
}

}  // namespace detail
}  // namespace vantrex::values

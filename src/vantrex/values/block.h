// The memory behind a list or an object: a header, followed by the items.
//
// A block belongs to exactly one list or object. The header knows how many items
// there is room for; how many there are stands in the list or object itself. A
// block with room for more than FieldIndex::kUnindexedFields fields has an index.
#pragma once

#include <cstddef>
#include <cstdint>

#include "vantrex/values/field_index.h"
#include "vantrex/values/json_value.h"

namespace vantrex::values::detail {

struct BlockHeader {
  std::uint32_t capacity;
  std::uint32_t dying_size;  // while a tree is taken apart: the number of items
  union {
    FieldIndex* index;        // of an object with room for many fields, else null
    BlockHeader* next_dying;  // while a tree is taken apart
  };
};

inline BlockHeader& header_of(void* items) noexcept {
  return static_cast<BlockHeader*>(items)[-1];
}
inline const BlockHeader& header_of(const void* items) noexcept {
  return static_cast<const BlockHeader*>(items)[-1];
}

// Gives `container`, which has no memory, room for exactly `capacity` items, at
// least 1. Throws std::bad_alloc, and std::length_error for more than 2^31.
template <typename Container>
void allocate(Container& container, std::size_t capacity);

// Ensures that `container` has room for `capacity` items. Its items keep their
// bytes, but move. When this throws, `container` is unchanged.
template <typename Container>
void reserve(Container& container, std::size_t capacity);

// The same for one item more, in amortised constant time.
template <typename Container>
void make_room(Container& container);

// Makes the index of `object`, if it has one, hold the fields as they are now.
void rebuild_index(JsonObject& object) noexcept;

// Destroys the items of `container`, everything below them, and its memory.
// Neither recurses nor allocates.
template <typename Container>
void destroy(Container& container) noexcept;

}  // namespace vantrex::values::detail

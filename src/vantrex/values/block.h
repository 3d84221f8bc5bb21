// The memory of a list or an object: a header, followed by the items.
//
// A block belongs to exactly one list or object. The header stores the capacity; the list or object stores
// the size. A block for more than FieldIndex::kUnindexedFields fields has an index.
#pragma once

#include <cstddef>
#include <cstdint>

#include "vantrex/values/field_index.h"
#include "vantrex/values/json_value.h"

namespace vantrex::values::detail {

struct BlockHeader {
  std::uint32_t capacity;
  std::uint32_t dying_size;  // during destruction: the number of items
  union {
    FieldIndex* index;        // null for a list or a small object
    BlockHeader* next_dying;  // during destruction: the next block to destroy
  };
};

inline BlockHeader& header_of(void* items) noexcept {
  return static_cast<BlockHeader*>(items)[-1];
}
inline const BlockHeader& header_of(const void* items) noexcept {
  return static_cast<const BlockHeader*>(items)[-1];
}

// Allocates a block of exactly `capacity` items, at least 1, for a container without one. Throws
// std::bad_alloc, and std::length_error for more than 2^31 items.
template <typename Container>
void allocate(Container& container, std::size_t capacity);

// Ensures a block with room for `capacity` items. Moves the items by copying their bytes. On failure,
// `container` is unchanged.
template <typename Container>
void reserve(Container& container, std::size_t capacity);

// Ensures room for one more item. Amortised constant time.
template <typename Container>
void make_room(Container& container);

// Rebuilds the index of `object` from its fields, if it has an index.
void rebuild_index(JsonObject& object) noexcept;

// Destroys the items of `container` with everything below them, and frees the block. Neither recurses nor
// allocates.
template <typename Container>
void destroy(Container& container) noexcept;

}  // namespace vantrex::values::detail

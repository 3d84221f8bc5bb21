// The memory of a list or an object: a header, followed by the items.
//
// A block belongs to exactly one list or object. The header stores the capacity; the list or object stores
// the size. A block for more than FieldIndex::kUnindexedFields fields has an index.
#pragma once

#include <cstddef>
#include <cstdint>

#include "vantrex/values/field_index.h"

namespace vantrex::values::detail {

struct BlockHeader {
  std::uint32_t capacity;  // at most 2^31; during destruction: the number of items
  bool holds_fields;
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

// Makes a block for exactly `capacity` items, at least 1. Throws std::bad_alloc, and std::length_error for
// more than 2^31 items.
template <typename Item>
Item* new_block(std::size_t capacity);

// Rebuilds the index of a block from its `size` items. Does nothing for a block without an index.
inline void rebuild_index(JsonField* fields, std::size_t size) noexcept {
  if (fields == nullptr) return;
  if (FieldIndex* index = header_of(fields).index) index->rebuild(fields, size);
}
inline void rebuild_index(JsonValue* /*items*/, std::size_t /*size*/) noexcept {}

}  // namespace vantrex::values::detail

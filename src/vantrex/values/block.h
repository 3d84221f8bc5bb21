// The memory of a list or an object: a header, followed by the items, and for more than
// FieldIndex::kUnindexedFields fields by their index.
//
// A block belongs to exactly one list or object. The header stores the capacity; the list or object stores
// the size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "vantrex/values/field_index.h"

namespace vantrex::values::detail {

struct BlockHeader {
  std::uint32_t capacity;  // at most 2^31; during destruction: the number of items
  bool holds_fields;
  BlockHeader* next_dying;  // during destruction: the next block to destroy
};

inline BlockHeader& header_of(void* items) noexcept {
  return static_cast<BlockHeader*>(items)[-1];
}
inline const BlockHeader& header_of(const void* items) noexcept {
  return static_cast<const BlockHeader*>(items)[-1];
}

// Makes a block for exactly `capacity` items, at least 1. An index must then be rebuilt. Throws
// std::bad_alloc, and std::length_error for more than 2^31 items.
template <typename Item>
Item* new_block(std::size_t capacity);

// The index of a block of fields; nothing for a small one.
inline std::optional<FieldIndex> index_of(JsonField* fields) noexcept {
  if (fields == nullptr || header_of(fields).capacity <= FieldIndex::kUnindexedFields) return std::nullopt;
  return FieldIndex(fields, header_of(fields).capacity);
}

// Rebuilds the index of a block, if it has one, from its first `size` items.
inline void rebuild_index(JsonField* fields, std::size_t size) noexcept {
  if (const auto index = index_of(fields)) index->rebuild(size);
}
inline void rebuild_index(JsonValue* /*items*/, std::size_t /*size*/) noexcept {}

}  // namespace vantrex::values::detail

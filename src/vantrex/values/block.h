// The memory of a list or an object: a header, followed by the items, and for more than
// FieldIndex::kUnindexedFields fields by their index.
//
// A block belongs to exactly one list or object. The header stores the capacity; the list or object stores
// the size.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::values::detail {

// Finds a field of a large object by its key: an open-addressing hash table of field positions, stored behind
// the fields. Changes of the object keep it current, so reads change nothing. The hash is seeded by the
// table's address, so colliding keys are hard to prepare.
class FieldIndex {
 public:
  // The largest number of fields that are searched without an index.
  static constexpr std::size_t kUnindexedFields = 32;

  // The memory behind room for `capacity` fields that their index needs, in bytes; 0 if they have none.
  static std::size_t bytes(std::size_t capacity) noexcept {
    return capacity <= kUnindexedFields ? 0 : slots(capacity) * sizeof(std::uint32_t);
  }

  // The index behind room for `capacity` fields, more than kUnindexedFields.
  FieldIndex(JsonField* fields, std::size_t capacity) noexcept
      : fields_(fields),
        slots_(reinterpret_cast<std::uint32_t*>(fields + capacity)),
        mask_(slots(capacity) - 1) {}

  // The position of the field `key`, or `none` when absent.
  std::size_t find(std::string_view key, std::size_t none) const noexcept;

  // Adds the field at `position`. Its key must be absent.
  void add(std::size_t position) const noexcept;

  // Replaces the contents by the first `size` fields. Their keys must differ.
  void rebuild(std::size_t size) const noexcept;

 private:
  static std::size_t slots(std::size_t capacity) noexcept { return std::bit_ceil(2 * capacity); }

  std::size_t hash(std::string_view key) const noexcept;

  const JsonField* fields_;
  std::uint32_t* slots_;  // a field's position plus 1, or 0 for a free slot
  std::size_t mask_;
};

struct BlockHeader {
  std::uint32_t capacity;  // at most 2^31; during destruction: the number of items
  bool holds_fields;
  BlockHeader* next_dying;  // during destruction: the next block to destroy
};

inline BlockHeader& header_of(void* items) noexcept {
  return static_cast<BlockHeader*>(items)[-1];
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

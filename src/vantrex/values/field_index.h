// FieldIndex: finds a field of a large object by its key.
//
// An open-addressing hash table of field positions. Changes of the object keep it current, so reads change
// nothing. The hash is seeded by the table's address, so colliding keys are hard to prepare.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::values::detail {

class FieldIndex {
 public:
  // The largest number of fields that are searched without an index.
  static constexpr std::size_t kUnindexedFields = 32;

  // Makes an empty index for up to `capacity` fields; free it with operator delete. Throws std::bad_alloc.
  static FieldIndex* create(std::size_t capacity);

  // The position of the field `key`, or `none` when absent.
  std::size_t find(std::string_view key, const JsonField* fields, std::size_t none) const noexcept;

  // Adds the field at `position`. Its key must be absent.
  void add(const Text& key, std::size_t position) noexcept;

  // Replaces the contents by these fields. Their keys must differ.
  void rebuild(const JsonField* fields, std::size_t size) noexcept;

 private:
  explicit FieldIndex(std::size_t slots) noexcept : mask_(slots - 1) {}

  static std::size_t slots_for(std::size_t capacity) noexcept { return std::bit_ceil(2 * capacity); }

  std::size_t hash(std::string_view key) const noexcept;
  std::uint32_t* slots() noexcept { return reinterpret_cast<std::uint32_t*>(this + 1); }
  const std::uint32_t* slots() const noexcept { return reinterpret_cast<const std::uint32_t*>(this + 1); }

  std::size_t mask_;
  // The slots follow in memory: a field's position plus 1, or 0 for a free slot.
};

}  // namespace vantrex::values::detail

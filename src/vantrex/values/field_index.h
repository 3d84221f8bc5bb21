// FieldIndex: finds a field of a large object by its key.
//
// An open-addressing hash table of field positions, stored behind the object's fields. Changes of the object
// keep it current, so reads change nothing. The hash is seeded by the table's address, so colliding keys are
// hard to prepare.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::values::detail {

// A view of an object's fields and their table.
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

}  // namespace vantrex::values::detail

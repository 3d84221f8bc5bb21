// FieldIndex: finds a field of a large object by its key.
//
// An open-addressing hash table of field positions, made and kept current by
// whoever changes the object, so that reads only read. Its hash is seeded by
// the table's own address: no input can be prepared to make keys collide.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::values::detail {

class FieldIndex {
 public:
  // Objects of up to this many fields are searched without an index.
  static constexpr std::size_t kUnindexedFields = 32;

  // An empty index for up to `capacity` fields, to be given back by operator delete.
  // Throws std::bad_alloc.
  static FieldIndex* create(std::size_t capacity);

  // The position of the field `key`, or `none` when there is no such field.
  std::size_t find(std::string_view key, const JsonField* fields, std::size_t none) const noexcept;

  // Adds the field at `position`, whose key the index does not hold.
  void add(const Text& key, std::size_t position) noexcept;

  // Makes the index hold these fields alone, whose keys differ.
  void rebuild(const JsonField* fields, std::size_t size) noexcept;

 private:
  explicit FieldIndex(std::size_t slots) noexcept : mask_(slots - 1) {}

  static std::size_t slots_for(std::size_t capacity) noexcept { return std::bit_ceil(2 * capacity); }

  std::size_t hash(std::string_view key) const noexcept;
  std::uint32_t* slots() noexcept { return reinterpret_cast<std::uint32_t*>(this + 1); }
  const std::uint32_t* slots() const noexcept { return reinterpret_cast<const std::uint32_t*>(this + 1); }

  std::size_t mask_;
  // The slots follow: a field's position plus one, 0 for a free slot.
};

}  // namespace vantrex::values::detail

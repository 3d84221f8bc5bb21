#include "vantrex/values/field_index.h"

#include <algorithm>
#include <cstring>

namespace vantrex::values::detail {

namespace {

// The exclusive or of both halves of the 128-bit product. Each bit of the factors affects all bits of the
// result.
std::uint64_t mixed(std::uint64_t a, std::uint64_t b) noexcept {
  __extension__ using Wide = unsigned __int128;
  const Wide product = static_cast<Wide>(a) * b;
  return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

}  // namespace

void FieldIndex::rebuild(std::size_t size) const noexcept {
  std::fill_n(slots_, mask_ + 1, 0);
  for (std::size_t position = 0; position < size; ++position) add(position);
}

std::size_t FieldIndex::hash(std::string_view key) const noexcept {
  constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;
  std::uint64_t state =
      mixed(reinterpret_cast<std::uintptr_t>(slots_) ^ kMultiplier, key.size() ^ kMultiplier);
  while (!key.empty()) {
    std::uint64_t word = 0;
    const std::size_t taken = std::min(key.size(), sizeof word);
    std::memcpy(&word, key.data(), taken);
    state = mixed(state ^ word, kMultiplier);
    key.remove_prefix(taken);
  }
  return state;
}

std::size_t FieldIndex::find(std::string_view key, std::size_t none) const noexcept {
  for (std::size_t slot = hash(key) & mask_; slots_[slot] != 0; slot = (slot + 1) & mask_) {
    const std::size_t position = slots_[slot] - 1;
    if (fields_[position].key.view() == key) return position;
  }
  return none;
}

void FieldIndex::add(std::size_t position) const noexcept {
  std::size_t slot = hash(fields_[position].key.view()) & mask_;
  while (slots_[slot] != 0) slot = (slot + 1) & mask_;
  slots_[slot] = static_cast<std::uint32_t>(position + 1);
}

}  // namespace vantrex::values::detail

// Making, changing and taking apart the blocks of lists and objects.
#pragma once

#include <cstddef>

#include "vantrex/values/container_block.h"

namespace vantrex::values::detail {

// The most items a list or an object holds.
inline constexpr std::size_t kMostItems = std::size_t{1} << 31;

// An empty block of its own. Throws std::bad_alloc, and std::length_error for
// more than kMostItems.
template <typename Item>
ContainerBlock* new_block(std::size_t capacity);

// The block to append to instead of `block`: of its own, with room for `capacity`
// items, holding the items of `block` (none when that is null). The caller gives
// up `block` for it; when this throws, `block` is unchanged.
template <typename Item>
ContainerBlock* roomy_block(ContainerBlock* block, std::size_t capacity);

// Counts what `block`, one of its own, has borrowed, so that its items can be
// changed and destroyed.
template <typename Item>
void keep_borrowed(ContainerBlock* block) noexcept;

// Takes another reference to `block` when it lies in an arena; false for a block
// of its own, which is never shared.
bool share(const ContainerBlock* block) noexcept;

// Gives up a reference to `block`: counts its arena down, or destroys its items
// and everything below them, without recursion and without allocating.
template <typename Item>
void give_up(ContainerBlock* block) noexcept;

}  // namespace vantrex::values::detail

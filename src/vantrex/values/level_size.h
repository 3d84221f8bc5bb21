// The size of one list or object whose lists and objects know theirs.
#pragma once

#include <cstddef>

#include "vantrex/values/container_block.h"

namespace vantrex::values::detail {

// Bytes of the compact text of `block`, a list's when Item is JsonValue and an
// object's when it is JsonField. Constant time for each item whose size is
// remembered.
template <typename Item>
std::size_t level_size(const ContainerBlock& block);

}  // namespace vantrex::values::detail

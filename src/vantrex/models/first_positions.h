// The texts of a sequence without repeats.
#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

namespace vantrex::models {

// The positions of the texts that equal no earlier one, ascending. `text_at(position)` is a text, for
// positions below `count`. Sorts instead of hashing: untrusted texts with equal hashes can be prepared.
// Throws std::bad_alloc.
template <typename TextAt>
std::vector<std::size_t> first_positions(std::size_t count, TextAt text_at) {
  std::vector<std::size_t> order(count);
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    const auto compared = text_at(a) <=> text_at(b);
    return compared == 0 ? a < b : compared < 0;
  });
  const auto equal = [&](std::size_t a, std::size_t b) { return text_at(a) == text_at(b); };
  order.erase(std::unique(order.begin(), order.end(), equal), order.end());
  std::sort(order.begin(), order.end());
  return order;
}

}  // namespace vantrex::models

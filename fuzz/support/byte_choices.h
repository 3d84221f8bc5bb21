// Random choices from the bytes of a fuzzer's input.
#pragma once

#include <cstddef>
#include <cstdint>

#include "fuzz/support/random_tree.h"

namespace vantrex::fuzz {

// Choices of two bytes each from `data`, then zeros, so that every input ends. `data` must outlive the
// result.
inline Random byte_choices(const std::uint8_t* data, std::size_t size, fuzz::Domain domain) {
  return Random(
      [data, size, next = std::size_t{0}]() mutable -> std::uint64_t {
        if (size - next < 2) return 0;
        const std::uint64_t choice = data[next] + 256U * data[next + 1];
        next += 2;
        return choice;
      },
      domain);
}

}  // namespace vantrex::fuzz

// Assertions for fuzz targets.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace vantrex::fuzz {

// Aborts with a message when the property does not hold; the fuzzer saves the input.
inline void check(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", property);
  std::abort();
}

}  // namespace vantrex::fuzz

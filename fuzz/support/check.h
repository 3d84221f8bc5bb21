// Assertions for fuzz targets.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace vantrex::fuzz {

// Aborts with a message; the fuzzer saves the input.
[[noreturn]] inline void fail(const char* property) {
  std::fprintf(stderr, "does not hold: %s\n", property);
  std::abort();
}

inline void check(bool holds, const char* property) {
  if (!holds) fail(property);
}

}  // namespace vantrex::fuzz

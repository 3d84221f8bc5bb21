// What a fuzz target does when a property does not hold.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace vantrex::fuzz {

// Ends the process with a message; the fuzzer keeps the input that led here.
[[noreturn]] inline void fail(const char* property) {
  std::fprintf(stderr, "does not hold: %s\n", property);
  std::abort();
}

inline void check(bool holds, const char* property) {
  if (!holds) fail(property);
}

}  // namespace vantrex::fuzz

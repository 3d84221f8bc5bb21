// The C library's settings for measuring.
#pragma once

#include <limits>
#include <malloc.h>

namespace vantrex::bench {

// Keeps freed memory in the process, for everything that is measured alike.
// Otherwise the C library gives large blocks back after every answer and gets
// them again as fresh pages, and what is measured is the system's clearing them.
inline void keep_freed_memory() {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  mallopt(M_TOP_PAD, 64 << 20);
}

}  // namespace vantrex::bench

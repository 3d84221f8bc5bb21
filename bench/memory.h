// Memory of the benchmarks: settings of the C library's allocator, and a count of allocations.
#pragma once

#include <cstddef>

namespace vantrex::bench {

// Keeps freed memory in the process. By default the C library returns large blocks to the system and gets
// them back as fresh pages; the benchmarks would then measure how fast the system clears pages.
void keep_freed_memory();

// Counts the memory that operator new allocates during this object's lifetime. Threads: one NewCount at a
// time, and only one thread may allocate meanwhile.
class NewCount {
 public:
  NewCount() noexcept;
  NewCount(const NewCount&) = delete;
  NewCount& operator=(const NewCount&) = delete;
  ~NewCount();

  // Begins a stage: sets the number of calls to 0 and the peak to the bytes in use.
  void restart() noexcept;
  // The calls of operator new in this stage.
  std::size_t allocations() const noexcept;
  // The largest number of bytes in use in this stage, of those allocated since this object was constructed.
  std::size_t peak_bytes() const noexcept;
};

}  // namespace vantrex::bench

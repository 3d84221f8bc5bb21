// The memory of what is measured: kept by the C library, and counted.
#pragma once

#include <cstddef>

namespace vantrex::bench {

// Keeps freed memory in the process, for everything that is measured alike.
// Otherwise the C library gives large blocks back after every answer and gets
// them again as fresh pages, and what is measured is the system's clearing them.
void keep_freed_memory();

// Counts what goes through operator new while it lives. Threads: one NewCount at a
// time, and only one thread may allocate meanwhile.
class NewCount {
 public:
  NewCount() noexcept;
  NewCount(const NewCount&) = delete;
  NewCount& operator=(const NewCount&) = delete;
  ~NewCount();

  // Begins a stage: what is held stays counted.
  void restart() noexcept;
  // Calls of operator new in this stage.
  std::size_t allocations() const noexcept;
  // The most bytes held at once in this stage, of those allocated since this object
  // was made.
  std::size_t peak_bytes() const noexcept;
};

}  // namespace vantrex::bench

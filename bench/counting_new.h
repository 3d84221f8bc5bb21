// Counts what goes through operator new, which the benchmarks replace.
//
// Counting is off but while a NewCount lives. Threads: one NewCount at a time,
// and only one thread may allocate while it lives.
#pragma once

#include <cstddef>

namespace vantrex::bench {

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

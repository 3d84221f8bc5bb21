// Counts the memory that a thread takes, and makes it run out on request.
#pragma once

#include <cstddef>
#include <functional>

namespace vantrex::tests {

// How often this thread has called operator new, and how many of these calls
// operator delete has not yet answered.
struct Allocations {
  std::size_t taken = 0;
  std::ptrdiff_t live = 0;
};
Allocations allocations() noexcept;

// Runs `operation` again and again, each time letting one allocation more
// succeed, until it does not run out of memory. Where it throws std::bad_alloc
// it must give back all it took, and then `check` is run. `once`: only that one
// allocation fails, and what unwinds may take memory again.
void fail_each_allocation(const std::function<void()>& operation, const std::function<void()>& check,
                          bool once = false);

}  // namespace vantrex::tests

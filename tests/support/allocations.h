// Counts the memory that a thread takes, and makes it run out on request.
#pragma once

#include <cstddef>
#include <functional>

namespace vantrex::tests {

// How often this thread has called operator new, and how many more times it did
// so than operator delete.
std::size_t allocations() noexcept;
std::ptrdiff_t live_allocations() noexcept;

// Runs `operation` again and again, each time letting one allocation more
// succeed, until it does not run out of memory. Each time that it threw
// std::bad_alloc it must have given back all it took; then `after_failure` is
// run. The operation takes at least one allocation.
void fail_each_allocation(const std::function<void()>& operation, const std::function<void()>& after_failure);

}  // namespace vantrex::tests

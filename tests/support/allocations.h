// Counts the memory that a thread takes, and makes it run out on request.
#pragma once

#include <cstddef>
#include <functional>

namespace vantrex::tests {

// How often this thread has called operator new.
std::size_t allocations() noexcept;

// Runs `operation` again and again, each time letting one allocation more
// succeed, until it does not run out of memory. Calls `after_failure` each time
// that it threw std::bad_alloc; returns how often that was.
std::size_t fail_each_allocation(const std::function<void()>& operation,
                                 const std::function<void()>& after_failure);

}  // namespace vantrex::tests

// Counts a thread's allocations and makes them fail on request.
#pragma once

#include <cstddef>
#include <functional>

namespace vantrex::tests {

struct Allocations {
  std::size_t taken = 0;    // all allocations so far
  std::ptrdiff_t live = 0;  // those not yet freed
};

// The allocations of this thread.
Allocations allocations() noexcept;

// Runs `operation` until it succeeds. The n-th run can make n - 1 allocations before one fails. Each run that
// throws std::bad_alloc must free all it took; then `check` runs. With `once`, only that one allocation
// fails, so the unwinding may allocate.
void fail_each_allocation(const std::function<void()>& operation, const std::function<void()>& check,
                          bool once = false);

}  // namespace vantrex::tests

#include "support/allocations.h"

#include <cstdlib>
#include <limits>
#include <new>

#include <gtest/gtest.h>

namespace vantrex::tests {

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

thread_local std::size_t taken = 0;
thread_local std::ptrdiff_t live = 0;
thread_local std::size_t left = kUnlimited;

// Whether `operation` ran out of memory after `allowed` allocations.
bool runs_out(const std::function<void()>& operation, std::size_t allowed) {
  try {
    left = allowed;
    operation();
    left = kUnlimited;
    return false;
  } catch (const std::bad_alloc&) {
    left = kUnlimited;
    return true;
  }
}

void* allocate(std::size_t bytes) {
  if (left == 0) throw std::bad_alloc();
  void* memory = std::malloc(bytes == 0 ? 1 : bytes);
  if (memory == nullptr) throw std::bad_alloc();
  if (left != kUnlimited) --left;
  ++taken;
  ++live;
  return memory;
}

void free_memory(void* memory) noexcept {
  if (memory != nullptr) --live;
  std::free(memory);
}

}  // namespace

std::size_t allocations() noexcept {
  return taken;
}

std::ptrdiff_t live_allocations() noexcept {
  return live;
}

void fail_each_allocation(const std::function<void()>& operation,
                          const std::function<void()>& after_failure) {
  for (std::size_t allowed = 0;; ++allowed) {
    const std::ptrdiff_t before = live;
    if (!runs_out(operation, allowed)) {
      EXPECT_GT(allowed, 0U);
      return;
    }
    ASSERT_EQ(live, before) << "leaks when it runs out of memory after " << allowed << " allocations";
    after_failure();
  }
}

}  // namespace vantrex::tests

void* operator new(std::size_t bytes) {
  return vantrex::tests::allocate(bytes);
}
void operator delete(void* memory) noexcept {
  vantrex::tests::free_memory(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  vantrex::tests::free_memory(memory);
}

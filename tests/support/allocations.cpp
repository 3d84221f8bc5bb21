#include "support/allocations.h"

#include <cstdlib>
#include <limits>
#include <new>

#include <gtest/gtest.h>

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

thread_local vantrex::tests::Allocations counted;
thread_local std::size_t left = kUnlimited;
thread_local bool fails_once = false;

}  // namespace

void* operator new(std::size_t bytes) {
  void* memory = left == 0 ? nullptr : std::malloc(bytes == 0 ? 1 : bytes);
  if (memory == nullptr) {
    if (fails_once) left = kUnlimited;
    throw std::bad_alloc();
  }
  if (left != kUnlimited) --left;
  ++counted.taken;
  ++counted.live;
  return memory;
}
// Replaced too: the one of a sanitizer would not match operator delete.
void* operator new(std::size_t bytes, const std::nothrow_t& /*unused*/) noexcept {
  try {
    return operator new(bytes);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}
void operator delete(void* memory) noexcept {
  if (memory != nullptr) --counted.live;
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  operator delete(memory);
}

namespace vantrex::tests {

Allocations allocations() noexcept {
  return counted;
}

void fail_each_allocation(const std::function<void()>& operation, const std::function<void()>& check,
                          bool once) {
  fails_once = once;
  for (std::size_t allowed = 0;; ++allowed) {
    const std::ptrdiff_t before = counted.live;
    left = allowed;
    try {
      operation();
      left = kUnlimited;
      return;
    } catch (const std::bad_alloc&) {
      left = kUnlimited;
    }
    ASSERT_EQ(counted.live, before) << "leaks where allocation " << allowed << " fails";
    check();
  }
}

}  // namespace vantrex::tests

#include "support/allocations.h"

#include <cstdlib>
#include <limits>
#include <new>

namespace vantrex::tests {

namespace {

constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

thread_local std::size_t taken = 0;
thread_local std::size_t left = kUnlimited;

}  // namespace

std::size_t allocations() noexcept {
  return taken;
}

std::size_t fail_each_allocation(const std::function<void()>& operation,
                                 const std::function<void()>& after_failure) {
  for (std::size_t failures = 0;; ++failures) {
    try {
      left = failures;
      operation();
      left = kUnlimited;
      return failures;
    } catch (const std::bad_alloc&) {
      left = kUnlimited;
      after_failure();
    }
  }
}

}  // namespace vantrex::tests

void* operator new(std::size_t bytes) {
  using namespace vantrex::tests;
  ++taken;
  if (left == 0) throw std::bad_alloc();
  if (left != kUnlimited) --left;
  if (void* memory = std::malloc(bytes == 0 ? 1 : bytes)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

#include "memory.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <malloc.h>
#include <new>

namespace {

bool is_counting = false;
std::size_t count = 0;
std::ptrdiff_t held = 0;
std::ptrdiff_t peak = 0;

std::ptrdiff_t bytes_of(void* memory) {
  return static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
}

}  // namespace

// The other forms of operator new and operator delete call these.
void* operator new(std::size_t bytes) {
  void* memory = std::malloc(bytes);
  if (memory == nullptr) throw std::bad_alloc();
  if (is_counting) {
    ++count;
    held += bytes_of(memory);
    peak = std::max(peak, held);
  }
  return memory;
}
void operator delete(void* memory) noexcept {
  if (is_counting) held -= bytes_of(memory);
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*bytes*/) noexcept {
  operator delete(memory);
}

namespace vantrex::bench {

void keep_freed_memory() {
  mallopt(M_MMAP_MAX, 0);
  mallopt(M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
  mallopt(M_TOP_PAD, 64 << 20);
}

NewCount::NewCount() noexcept {
  held = 0;
  restart();
  is_counting = true;
}
NewCount::~NewCount() {
  is_counting = false;
}
void NewCount::restart() noexcept {
  count = 0;
  peak = held;
}
std::size_t NewCount::allocations() const noexcept {
  return count;
}
std::size_t NewCount::peak_bytes() const noexcept {
  return static_cast<std::size_t>(peak);
}

}  // namespace vantrex::bench

#include "counting_new.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

bool counting = false;
std::size_t allocations = 0;
std::ptrdiff_t held_bytes = 0;
std::ptrdiff_t most_bytes = 0;

void* counted_allocate(std::size_t bytes) {
  void* memory = std::malloc(bytes);
  if (memory == nullptr) throw std::bad_alloc();
  if (counting) {
    ++allocations;
    held_bytes += static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
    most_bytes = std::max(most_bytes, held_bytes);
  }
  return memory;
}

void counted_release(void* memory) noexcept {
  if (counting && memory != nullptr) held_bytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(memory));
  std::free(memory);
}

}  // namespace

void* operator new(std::size_t bytes) {
  return counted_allocate(bytes);
}
void* operator new[](std::size_t bytes) {
  return counted_allocate(bytes);
}
void operator delete(void* memory) noexcept {
  counted_release(memory);
}
void operator delete[](void* memory) noexcept {
  counted_release(memory);
}
void operator delete(void* memory, std::size_t /*bytes*/) noexcept {
  counted_release(memory);
}
void operator delete[](void* memory, std::size_t /*bytes*/) noexcept {
  counted_release(memory);
}

namespace vantrex::bench {

NewCount::NewCount() noexcept {
  held_bytes = 0;
  restart();
  counting = true;
}
NewCount::~NewCount() {
  counting = false;
}

void NewCount::restart() noexcept {
  ::allocations = 0;
  most_bytes = held_bytes;
}
std::size_t NewCount::allocations() const noexcept {
  return ::allocations;
}
std::size_t NewCount::peak_bytes() const noexcept {
  return static_cast<std::size_t>(most_bytes);
}

}  // namespace vantrex::bench

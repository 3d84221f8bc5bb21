#include "vantrex/values/arena.h"

#include <algorithm>
#include <new>

namespace vantrex::values {

namespace {

// A small arena is made of chunks that allocators hand out fastest, each thread
// from a store of its own. A larger one doubles, so that it takes few.
constexpr std::size_t kSmallChunk = 1024;
constexpr std::size_t kSmallArena = 4 * kSmallChunk;
constexpr std::size_t kLargestChunk = std::size_t{1} << 20;

}  // namespace

Arena* Arena::create(std::size_t bytes, const KeySet* marked_keys) {
  const std::size_t first_bytes = std::min(sizeof(Arena) + bytes, kSmallChunk);
  auto* memory = static_cast<char*>(::operator new(first_bytes));
  return new (memory) Arena(memory + sizeof(Arena), memory + first_bytes, marked_keys);
}

void Arena::grow(std::size_t bytes) {
  const std::size_t usual_bytes =
      chunk_bytes_ < kSmallArena ? kSmallChunk : std::min(chunk_bytes_, kLargestChunk);
  const std::size_t chunk_bytes = std::max(usual_bytes, bytes + sizeof(Chunk));
  auto* memory = static_cast<char*>(::operator new(chunk_bytes));
  chunks_ = new (memory) Chunk{chunks_};
  cursor_ = memory + sizeof(Chunk);
  end_ = memory + chunk_bytes;
  chunk_bytes_ += chunk_bytes;
}

void Arena::keep(const JsonValue& value) {
  kept_ = new (allocate(sizeof(Kept))) Kept{value, kept_};
}

void Arena::destroy() noexcept {
  for (Kept* kept = kept_; kept != nullptr; kept = kept->next) kept->value.~JsonValue();
  for (Chunk* chunk = chunks_; chunk != nullptr;) ::operator delete(std::exchange(chunk, chunk->next));
  this->~Arena();
  ::operator delete(this);
}

}  // namespace vantrex::values

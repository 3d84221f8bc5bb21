#include "vantrex/values/arena.h"

#include <algorithm>
#include <new>

namespace vantrex::values {

namespace {

constexpr std::size_t kLargestChunk = std::size_t{1} << 20;

}  // namespace

Arena* Arena::create(std::size_t bytes) {
  const std::size_t first = std::min(sizeof(Arena) + bytes, std::size_t(1024));
  auto* memory = static_cast<char*>(::operator new(first));
  auto* arena = new (memory) Arena(memory + sizeof(Arena), memory + first);
  arena->next_chunk_bytes_ = 1024;
  return arena;
}

void Arena::grow(std::size_t bytes) {
  const std::size_t chunk_bytes = std::max(next_chunk_bytes_, bytes + sizeof(Chunk));
  auto* memory = static_cast<char*>(::operator new(chunk_bytes));
  chunks_ = new (memory) Chunk{chunks_};
  cursor_ = memory + sizeof(Chunk);
  end_ = memory + chunk_bytes;
  total_ += chunk_bytes;
  next_chunk_bytes_ = total_ < 4096 ? 1024 : std::min(total_, kLargestChunk);
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

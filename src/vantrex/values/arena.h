// Arena: memory for one immutable tree of values, given back all at once.
//
// Ownership: counted. Whoever refers into the arena from outside holds one
// count; with the last the arena and everything in it goes. Values inside the
// arena own nothing: what of them lives elsewhere (a foreign value, a very long
// text) is kept by the arena itself.
//
// Threads: one thread fills an arena; after that it never changes, and counts
// may be taken and given back on any thread.
#pragma once

#include <atomic>
#include <cstddef>

#include "vantrex/values/json_value.h"
#include "vantrex/values/key_set.h"

namespace vantrex::values {

class Arena {
 public:
  // An arena for a tree of perhaps `bytes`, held by one count. Throws
  // std::bad_alloc, as do allocate() and keep(). `marked_keys` outlives it.
  static Arena* create(std::size_t bytes, const KeySet* marked_keys);

  Arena(const Arena&) = delete;
  Arena& operator=(const Arena&) = delete;

  // Takes or gives back `counts` counts at once.
  void retain(std::size_t counts = 1) noexcept { references_.fetch_add(counts, std::memory_order_relaxed); }
  void release(std::size_t counts = 1) noexcept {
    if (references_.fetch_sub(counts, std::memory_order_acq_rel) == counts) destroy();
  }

  // Uninitialised memory, aligned for every value.
  void* allocate(std::size_t bytes) {
    bytes = (bytes + kAlignment - 1) & ~(kAlignment - 1);
    if (bytes > static_cast<std::size_t>(end_ - cursor_)) grow(bytes);
    void* memory = cursor_;
    cursor_ += bytes;
    return memory;
  }

  // The keys of which each block tells whether a field in it has one; null when
  // the blocks do not tell.
  const KeySet* marked_keys() const noexcept { return marked_keys_; }

  // Keeps what `value` refers to alive as long as the arena.
  void keep(const JsonValue& value);

 private:
  static constexpr std::size_t kAlignment = alignof(JsonValue);

  struct Chunk {
    Chunk* next;
  };
  struct Kept {
    JsonValue value;
    Kept* next;
  };

  Arena(char* begin, char* end, const KeySet* marked_keys) noexcept
      : cursor_(begin), end_(end), marked_keys_(marked_keys) {}
  ~Arena() = default;

  void grow(std::size_t bytes);
  void destroy() noexcept;

  std::atomic<std::size_t> references_{1};
  char* cursor_;
  char* end_;
  const KeySet* marked_keys_;
  Chunk* chunks_ = nullptr;  // beside the one that the arena itself begins
  Kept* kept_ = nullptr;
  std::size_t chunk_bytes_ = 0;  // in these chunks
};

}  // namespace vantrex::values

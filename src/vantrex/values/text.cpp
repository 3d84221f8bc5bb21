#include "vantrex/values/text.h"

#include <new>
#include <utility>

#include "vantrex/values/arena.h"
#include "vantrex/values/utf8.h"

namespace vantrex::values {

InvalidUtf8::InvalidUtf8(std::size_t byte_offset)
    : std::invalid_argument("the text is not valid UTF-8 at byte " + std::to_string(byte_offset)),
      byte_offset_(byte_offset) {}

namespace detail {

void retain(TextBlock* block) noexcept {
  if (block->arena != nullptr) {
    block->arena->retain();
  } else {
    block->references.fetch_add(1, std::memory_order_relaxed);
  }
}

void release(TextBlock* block) noexcept {
  if (block->arena != nullptr) {
    block->arena->release();
    return;
  }
  if (block->references.fetch_sub(1, std::memory_order_acq_rel) == 1) ::operator delete(block);
}

}  // namespace detail

Text::Text(std::string_view well_formed, std::size_t escape_gain) : Text() {
  if (well_formed.size() <= detail::kInlineCapacity) {
    set_inline(well_formed, escape_gain);
    return;
  }
  void* memory = ::operator new(sizeof(detail::TextBlock) + well_formed.size());
  auto* block = new (memory) detail::TextBlock{nullptr, {1}, well_formed.size(), escape_gain};
  std::memcpy(block->characters(), well_formed.data(), well_formed.size());
  shared_ = {detail::Tag::shared_text, 0, block};
}

Text::Text(std::string_view bytes) : Text() {
  const Utf8Scan scan = scan_utf8(bytes);
  if (scan.well_formed != bytes.size()) throw InvalidUtf8(scan.well_formed);
  *this = Text(bytes, scan.escape_gain);
}

Text::Text(const char* bytes) : Text() {
  if (bytes == nullptr) throw std::invalid_argument("a null pointer is no text");
  *this = Text(std::string_view(bytes));
}

Text Text::lossy(std::string_view bytes) {
  const Utf8Scan scan = scan_utf8(bytes);
  if (scan.well_formed == bytes.size()) return {bytes, scan.escape_gain};
  return repaired_utf8(bytes);
}

void Text::swap(Text& other) noexcept {
  Text held(other, NoCount{});
  std::memcpy(static_cast<void*>(&other), static_cast<const void*>(this), sizeof(Text));
  std::memcpy(static_cast<void*>(this), static_cast<const void*>(&held), sizeof(Text));
  held.inline_ = {detail::Tag::inline_text, 0, {}};
}

}  // namespace vantrex::values

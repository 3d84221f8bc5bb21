#include "vantrex/values/text.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>
#include <string>

#include "vantrex/values/utf8.h"

namespace vantrex::values {

namespace {

// Precedes the characters of a shared text in memory.
struct SharedHeader {
  std::atomic<std::size_t> references;
  std::size_t escape_gain;
};

SharedHeader* header_of(const detail::TextBits& shared) noexcept {
  auto* characters = const_cast<char*>(shared.out.characters);  // NOLINT(*-const-cast)
  return reinterpret_cast<SharedHeader*>(characters) - 1;
}

std::uint32_t checked_size(std::size_t size) {
  if (size > detail::kMaxTextBytes) throw std::length_error("a text holds at most 2^32 - 1 bytes");
  return static_cast<std::uint32_t>(size);
}

std::size_t checked_gain(std::string_view bytes) {
  checked_size(bytes.size());
  const Utf8Scan scan = scan_utf8(bytes);
  if (scan.well_formed != bytes.size()) throw InvalidUtf8(scan.well_formed);
  return scan.escape_gain;
}

}  // namespace

std::string_view detail::view_of_pointer(const char* characters) {
  if (characters == nullptr) throw std::invalid_argument("a null pointer is no text");
  return characters;
}

InvalidUtf8::InvalidUtf8(std::size_t byte_offset)
    : std::invalid_argument("the text is not valid UTF-8 at byte " + std::to_string(byte_offset)),
      byte_offset_(byte_offset) {}

Text::Text(std::string_view well_formed, std::size_t escape_gain) : bits_(detail::kEmptyText) {
  const std::size_t size = well_formed.size();
  const auto gain = static_cast<std::uint8_t>(std::min<std::size_t>(escape_gain, detail::kLargeGain));
  if (size <= detail::kInlineCapacity) {
    bits_.in.tag = detail::inline_tag(size);
    bits_.in.escape_gain = gain;
    std::copy_n(well_formed.data(), size, bits_.in.characters);
    return;
  }
  void* memory = ::operator new(sizeof(SharedHeader) + size);
  auto* characters = reinterpret_cast<char*>(new (memory) SharedHeader{{1}, escape_gain} + 1);
  std::memcpy(characters, well_formed.data(), size);
  bits_.out = {{detail::Tag::shared_text, gain, 0, static_cast<std::uint32_t>(size)}, characters};
}

Text::Text(std::string_view bytes) : Text(bytes, checked_gain(bytes)) {}

Text Text::lossy(std::string_view bytes) {
  checked_size(bytes.size());
  const Utf8Scan scan = scan_utf8(bytes);
  if (scan.well_formed == bytes.size()) return {bytes, scan.escape_gain};
  return repaired_utf8(bytes);
}

void Text::retain(const detail::TextBits& shared) noexcept {
  header_of(shared)->references.fetch_add(1, std::memory_order_relaxed);
}

void Text::release(const detail::TextBits& shared) noexcept {
  SharedHeader* header = header_of(shared);
  // The last owner skips the atomic decrement.
  if (header->references.load(std::memory_order_acquire) == 1 ||
      header->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    ::operator delete(header);
  }
}

std::size_t Text::large_gain() const noexcept {
  return header_of(bits_)->escape_gain;
}

TextArgument::TextArgument(std::string_view bytes)
    : bits_{.out = {{kUnchecked, 0, 0, checked_size(bytes.size())}, bytes.data()}} {}

}  // namespace vantrex::values

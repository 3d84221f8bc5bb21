#include "vantrex/values/text.h"

#include <atomic>
#include <limits>
#include <new>

namespace vantrex::values {

namespace {

// What stands before the characters of a shared text.
struct SharedHeader {
  std::atomic<std::size_t> references;
  std::size_t escape_gain;
};

SharedHeader* header_of(const detail::TextBits& shared) noexcept {
  return reinterpret_cast<SharedHeader*>(const_cast<char*>(shared.out.characters)) -
         1;  // NOLINT(*-const-cast)
}

// Up to eight of `bytes`, the first in the lowest place, and zeros.
std::uint64_t little_endian_word(std::string_view bytes) noexcept {
  const auto load = [bytes]<typename Part>(Part part, std::size_t at) {
    std::memcpy(&part, bytes.data() + at, sizeof part);
    return std::uint64_t{part} << 8 * at;
  };
  // The two parts of a middling size overlap.
  const std::size_t size = bytes.size();
  if (size >= 8) return load(std::uint64_t{}, 0);
  if (size >= 4) return load(std::uint32_t{}, 0) | load(std::uint32_t{}, size - 4);
  if (size >= 2) return load(std::uint16_t{}, 0) | load(std::uint16_t{}, size - 2);
  return size == 1 ? load(std::uint8_t{}, 0) : 0;
}

// The bits of a short text, put together in registers as make_head does it.
detail::TextBits inline_bits(std::string_view bytes, std::uint8_t gain) noexcept {
  detail::TextBits bits{.in = {detail::inline_tag(bytes.size()), gain, {}}};
  if constexpr (std::endian::native == std::endian::little) {
    const std::uint64_t first = little_endian_word(bytes);
    const std::uint64_t rest = bytes.size() > 8 ? little_endian_word(bytes.substr(8)) : 0;
    const std::uint64_t words[] = {
        static_cast<std::uint64_t>(bits.tag()) | std::uint64_t{gain} << 8 | first << 16,
        first >> 48 | rest << 16};
    std::memcpy(&bits, words, sizeof bits);
  } else {
    std::copy_n(bytes.data(), bytes.size(), bits.in.characters);
  }
  return bits;
}

std::uint32_t checked_size(std::size_t size) {
  if (size > std::numeric_limits<std::uint32_t>::max()) {
    throw std::length_error("a text holds at most 2^32 - 1 bytes");
  }
  return static_cast<std::uint32_t>(size);
}

std::size_t checked_gain(std::string_view bytes) {
  const Utf8Scan scan = scan_utf8(bytes);
  if (scan.well_formed != bytes.size()) throw InvalidUtf8(scan.well_formed);
  return scan.escape_gain;
}

std::string_view non_null_text(const char* characters) {
  if (characters == nullptr) throw std::invalid_argument("a null pointer is no text");
  return characters;
}

}  // namespace

InvalidUtf8::InvalidUtf8(std::size_t byte_offset)
    : std::invalid_argument("the text is not valid UTF-8 at byte " + std::to_string(byte_offset)),
      byte_offset_(byte_offset) {}

Text::Text(std::string_view well_formed, std::size_t escape_gain) : bits_(detail::kEmptyText) {
  const std::size_t size = well_formed.size();
  const auto gain = static_cast<std::uint8_t>(std::min<std::size_t>(escape_gain, detail::kLargeGain));
  if (size <= detail::kInlineCapacity) {
    bits_ = inline_bits(well_formed, gain);
    return;
  }
  const std::uint32_t held_size = checked_size(size);
  void* memory = ::operator new(sizeof(SharedHeader) + size);
  auto* characters = reinterpret_cast<char*>(new (memory) SharedHeader{{1}, escape_gain} + 1);
  std::memcpy(characters, well_formed.data(), size);
  bits_.out = {detail::make_head(detail::Tag::shared_text, held_size, gain), characters};
}

Text::Text(std::string_view bytes) : Text(bytes, checked_gain(bytes)) {}

Text::Text(const char* bytes) : Text(non_null_text(bytes)) {}

Text Text::lossy(std::string_view bytes) {
  const Utf8Scan scan = scan_utf8(bytes);
  if (scan.well_formed == bytes.size()) return {bytes, scan.escape_gain};
  return repaired_utf8(bytes);
}

void Text::retain() const noexcept {
  header_of(bits_)->references.fetch_add(1, std::memory_order_relaxed);
}

void Text::release() const noexcept {
  SharedHeader* header = header_of(bits_);
  // The only owner need not write the count, which would cost an atomic operation.
  if (header->references.load(std::memory_order_acquire) == 1 ||
      header->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    ::operator delete(header);
  }
}

std::size_t Text::large_gain() const noexcept {
  return header_of(bits_)->escape_gain;
}

TextArgument::TextArgument(std::string_view bytes)
    : bits_{.out = {detail::make_head(kUnchecked, checked_size(bytes.size())), bytes.data()}} {}

std::string_view TextArgument::non_null(const char* characters) {
  return non_null_text(characters);
}

}  // namespace vantrex::values

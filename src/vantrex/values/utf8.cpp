#include "vantrex/values/utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "vantrex/values/escapes.h"

namespace vantrex::values {

namespace {

constexpr std::uint64_t kEveryByte = 0x0101010101010101;
constexpr std::uint64_t kHighBits = kEveryByte * 0x80;

// A high bit in each byte of `word` that is zero. Bytes above a zero byte may be
// marked too, which is good enough to ask whether there is any.
constexpr std::uint64_t zero_bytes(std::uint64_t word) noexcept {
  return (word - kEveryByte) & ~word & kHighBits;
}

// Whether all eight bytes are ASCII that a JSON string takes as it is.
constexpr bool is_plain(std::uint64_t word) noexcept {
  const std::uint64_t below_space = (word - kEveryByte * 0x20) & ~word;
  const std::uint64_t quotes = zero_bytes(word ^ (kEveryByte * '"'));
  const std::uint64_t backslashes = zero_bytes(word ^ (kEveryByte * '\\'));
  return ((word | below_space | quotes | backslashes) & kHighBits) == 0;
}

// The first eight bytes of `bytes`, or all of them, when they are plain; else 0.
std::size_t plain_bytes(std::string_view bytes) noexcept {
  constexpr std::uint64_t kSpaces = kEveryByte * ' ';
  std::uint64_t word = kSpaces;
  const std::size_t taken = std::min(bytes.size(), sizeof word);
  if (taken == sizeof word) {
    std::memcpy(&word, bytes.data(), sizeof word);
  } else {
    std::memcpy(&word, bytes.data(), taken);
  }
  return is_plain(word) ? taken : 0;
}

constexpr bool in_range(char byte, unsigned low, unsigned high) noexcept {
  const auto value = static_cast<unsigned char>(byte);
  return low <= value && value <= high;
}

// The bytes that a lead byte asks for, and the range of the one that follows
// it, which is where overlong forms, surrogates and too large code points show.
struct Lead {
  std::size_t length;
  unsigned second_low;
  unsigned second_high;
};

constexpr Lead lead_of(unsigned char byte) noexcept {
  if (byte < 0x80) return {1, 0, 0};
  if (byte < 0xC2) return {0, 0, 0};
  if (byte < 0xE0) return {2, 0x80, 0xBF};
  if (byte == 0xE0) return {3, 0xA0, 0xBF};
  if (byte == 0xED) return {3, 0x80, 0x9F};
  if (byte < 0xF0) return {3, 0x80, 0xBF};
  if (byte == 0xF0) return {4, 0x90, 0xBF};
  if (byte < 0xF4) return {4, 0x80, 0xBF};
  if (byte == 0xF4) return {4, 0x80, 0x8F};
  return {0, 0, 0};
}

// How many bytes at the start of `bytes` begin a well-formed sequence, and
// whether they finish it.
struct Prefix {
  std::size_t length;
  bool complete;
};

Prefix sequence_prefix(std::string_view bytes) noexcept {
  const Lead lead = lead_of(static_cast<unsigned char>(bytes.front()));
  if (lead.length == 0) return {1, false};
  for (std::size_t position = 1; position < lead.length; ++position) {
    const unsigned low = position == 1 ? lead.second_low : 0x80;
    const unsigned high = position == 1 ? lead.second_high : 0xBF;
    if (position == bytes.size() || !in_range(bytes[position], low, high)) return {position, false};
  }
  return {lead.length, true};
}

}  // namespace

std::size_t utf8_sequence_length(std::string_view bytes) noexcept {
  if (bytes.empty()) return 0;
  const Prefix prefix = sequence_prefix(bytes);
  return prefix.complete ? prefix.length : 0;
}

Utf8Scan scan_utf8(std::string_view bytes) noexcept {
  Utf8Scan scan;
  while (scan.well_formed < bytes.size()) {
    const std::size_t plain = plain_bytes(bytes.substr(scan.well_formed));
    if (plain > 0) {
      scan.well_formed += plain;
      continue;
    }
    const std::size_t length = utf8_sequence_length(bytes.substr(scan.well_formed));
    if (length == 0) break;
    scan.escape_gain += detail::escape_gain(bytes[scan.well_formed]);
    scan.well_formed += length;
  }
  return scan;
}

std::string repaired_utf8(std::string_view bytes) {
  std::string repaired;
  while (!bytes.empty()) {
    const std::size_t good = scan_utf8(bytes).well_formed;
    repaired += bytes.substr(0, good);
    bytes.remove_prefix(good);
    if (bytes.empty()) break;
    repaired += "\xEF\xBF\xBD";
    bytes.remove_prefix(sequence_prefix(bytes).length);
  }
  return repaired;
}

}  // namespace vantrex::values

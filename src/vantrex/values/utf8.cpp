#include "vantrex/values/utf8.h"

#include <algorithm>

#include "vantrex/values/byte_block.h"

namespace vantrex::values {

namespace {

using detail::ByteBlock;

// Continues a scan over whole blocks of ASCII.
void scan_ascii(std::string_view bytes, Utf8Scan& scan) noexcept {
  while (bytes.size() - scan.well_formed >= ByteBlock::kBytes) {
    const ByteBlock block(bytes.data() + scan.well_formed);
    if (!block.is_ascii()) return;
    for (unsigned mask = block.specials(); mask != 0; mask &= mask - 1)
      scan.escape_gain += detail::escape_gain(bytes[scan.well_formed + ByteBlock::bytes_before(mask)]);
    scan.well_formed += ByteBlock::kBytes;
  }
}

// Whether the last ByteBlock::kBytes bytes are plain, or all of them when there are fewer. There must be at
// least one.
bool ends_plain(std::string_view bytes) noexcept {
  if (bytes.size() < ByteBlock::kBytes) return ByteBlock::of_few(bytes.data(), bytes.size()).is_plain();
  return ByteBlock(bytes.data() + bytes.size() - ByteBlock::kBytes).is_plain();
}

}  // namespace

Utf8Scan scan_utf8(std::string_view bytes) noexcept {
  Utf8Scan scan;
  std::size_t& at = scan.well_formed;
  while (true) {
    scan_ascii(bytes, scan);
    if (at == bytes.size()) return scan;
    if (bytes.size() - at < ByteBlock::kBytes && ends_plain(bytes)) {
      at = bytes.size();
      return scan;
    }
    for (const std::size_t end = std::min(at + ByteBlock::kBytes, bytes.size()); at < end;) {
      const Utf8Prefix character = utf8_prefix(bytes.substr(at));
      if (!character.is_complete) return scan;
      scan.escape_gain += detail::escape_gain(bytes[at]);
      at += character.length;
    }
  }
}

std::string repaired_utf8(std::string_view bytes) {
  std::string repaired;
  while (!bytes.empty()) {
    const std::size_t good = scan_utf8(bytes).well_formed;
    repaired += bytes.substr(0, good);
    bytes.remove_prefix(good);
    if (bytes.empty()) break;
    repaired += "\xEF\xBF\xBD";
    bytes.remove_prefix(utf8_prefix(bytes).length);
  }
  return repaired;
}

}  // namespace vantrex::values

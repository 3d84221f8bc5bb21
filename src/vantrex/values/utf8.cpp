#include "vantrex/values/utf8.h"

#include "vantrex/values/byte_block.h"
#include "vantrex/values/escapes.h"

namespace vantrex::values {

namespace {

using detail::ByteVector;
using detail::ByteWord;

// Goes on with a scan as long as whole blocks are ASCII.
template <typename Block>
void scan_ascii(std::string_view bytes, Utf8Scan& scan) noexcept {
  while (bytes.size() - scan.well_formed >= Block::kBytes) {
    const Block block(bytes.data() + scan.well_formed);
    if (!block.is_ascii()) return;
    scan.escape_gain += block.escape_gain();
    scan.well_formed += Block::kBytes;
  }
}

// Whether the last `size` of the bytes, fewer than a word holds, are plain.
bool ends_plain(std::string_view bytes, std::size_t size) noexcept {
  if (bytes.size() >= ByteWord::kBytes)
    return ByteWord(bytes.data() + bytes.size() - ByteWord::kBytes).is_plain();
  return ByteWord::of_few(bytes.data(), size).is_plain();
}

}  // namespace

Utf8Scan scan_utf8(std::string_view bytes) noexcept {
  Utf8Scan scan;
  std::size_t& at = scan.well_formed;
  while (at < bytes.size()) {
    scan_ascii<ByteVector>(bytes, scan);
    scan_ascii<ByteWord>(bytes, scan);
    const std::size_t left = bytes.size() - at;
    if (left == 0 || (left < ByteWord::kBytes && ends_plain(bytes, left))) {
      at = bytes.size();
      break;
    }
    for (const std::size_t end = at + std::min(left, ByteWord::kBytes); at < end;) {
      const Utf8Prefix character = utf8_prefix(bytes.substr(at));
      if (!character.is_complete) return scan;
      scan.escape_gain += detail::escape_gain(bytes[at]);
      at += character.length;
    }
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
    bytes.remove_prefix(utf8_prefix(bytes).length);
  }
  return repaired;
}

}  // namespace vantrex::values

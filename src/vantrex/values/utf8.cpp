#include "vantrex/values/utf8.h"

#include "vantrex/values/byte_word.h"
#include "vantrex/values/escapes.h"

namespace vantrex::values {

namespace {

using detail::ByteWord;

// Whether the bytes from `at` on, fewer than a word holds, are plain.
bool is_plain_tail(std::string_view bytes, std::size_t at) noexcept {
  const char* end = bytes.data() + bytes.size();
  if (bytes.size() >= ByteWord::kBytes) return ByteWord(end - ByteWord::kBytes).is_plain();
  return ByteWord::of_few(bytes.data() + at, bytes.size() - at).is_plain();
}

}  // namespace

Utf8Scan scan_utf8(std::string_view bytes) noexcept {
  Utf8Scan scan;
  std::size_t& at = scan.well_formed;
  while (at < bytes.size()) {
    if (bytes.size() - at < ByteWord::kBytes) {
      if (is_plain_tail(bytes, at)) {
        at = bytes.size();
        break;
      }
    } else if (const ByteWord word(bytes.data() + at); word.is_ascii()) {
      scan.escape_gain += word.escape_gain();
      at += ByteWord::kBytes;
      continue;
    }
    for (const std::size_t end = std::min(at + ByteWord::kBytes, bytes.size()); at < end;) {
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

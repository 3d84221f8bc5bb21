#include "vantrex/logging/quoted_literal.h"

#include <cstddef>

#include "vantrex/values/utf8.h"

namespace vantrex::logging {

namespace {

void append_hex(std::string& text, std::string_view prefix, unsigned value, int digits) {
  text += prefix;
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
    text += "0123456789abcdef"[(value >> shift) & 0xF];
}

void append_control(std::string& text, char control) {
  const std::size_t place = std::string_view("\n\r\t").find(control);
  if (place == std::string_view::npos) {
    append_hex(text, "\\x", static_cast<unsigned char>(control), 2);
  } else {
    text.append("\\") += "nrt"[place];
  }
}

// The code point of a multi-byte `sequence` that is a control character or a line break, otherwise 0.
unsigned unprintable(std::string_view sequence) noexcept {
  if (sequence[0] == '\xC2') {
    const auto second = static_cast<unsigned char>(sequence[1]);
    return second < 0xA0 ? second : 0;
  }
  if (sequence == "\xE2\x80\xA8") return 0x2028;
  if (sequence == "\xE2\x80\xA9") return 0x2029;
  return 0;
}

// Appends `bytes` with unprintable characters escaped. A backslash and `quote` are escaped as well unless
// `quote` is 0.
void append_escaped(std::string& text, std::string_view bytes, char quote) {
  for (std::size_t position = 0; position < bytes.size();) {
    const std::size_t length = values::utf8_sequence_length(bytes.substr(position));
    const auto first = static_cast<unsigned char>(bytes[position]);
    if (length == 0) {
      append_hex(text, "\\x", first, 2);
    } else if (length == 1 && (first < 0x20 || first == 0x7F)) {
      append_control(text, bytes[position]);
    } else if (const unsigned code_point = unprintable(bytes.substr(position, length)); code_point != 0) {
      append_hex(text, "\\u", code_point, 4);
    } else {
      if (quote != 0 && (bytes[position] == quote || bytes[position] == '\\')) text += '\\';
      text += bytes.substr(position, length);
    }
    position += length == 0 ? 1 : length;
  }
}

}  // namespace

std::string quoted_literal(std::string_view bytes) {
  const bool has_single = bytes.find('\'') != std::string_view::npos;
  const char quote = has_single && bytes.find('"') == std::string_view::npos ? '"' : '\'';
  std::string text;
  text.reserve(bytes.size() + 2);
  text += quote;
  append_escaped(text, bytes, quote);
  text += quote;
  return text;
}

std::string printable(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  append_escaped(text, bytes, 0);
  return text;
}

}  // namespace vantrex::logging

#include "fuzz/support/drawn.h"

#include <cctype>
#include <string_view>

#include "fuzz/support/naive.h"

namespace vantrex::fuzz {

using values::JsonValue;

namespace {

constexpr std::size_t kOffsets = 16;  // in the longest word that is scanned at once
constexpr std::size_t kShortText = 14;
constexpr std::size_t kPlainRun = 64;
constexpr std::size_t kUnindexedFields = 32;

std::string character(unsigned char first_byte, const std::string& where) {
  return "first byte " + std::to_string(first_byte) + " in a " + where;
}

std::string escape(unsigned char byte, std::size_t offset, const std::string& where) {
  const std::string name = byte < 0x20 ? "control character" : std::string(1, static_cast<char>(byte));
  return name + " at " + std::to_string(offset % kOffsets) + " in a " + where;
}

std::string digits(std::size_t count) {
  return "float of " + std::to_string(count) + " digits";
}

void count_text(std::string_view text, const std::string& where, Counts& counts) {
  if (text.size() > kShortText) ++counts["long " + where];
  std::size_t plain = 0;
  for (std::size_t offset = 0; offset < text.size(); ++offset) {
    const auto byte = static_cast<unsigned char>(text[offset]);
    const bool is_plain = byte >= 0x20 && byte != '"' && byte != '\\';
    plain = is_plain ? plain + 1 : 0;
    if (plain == kPlainRun) ++counts["plain run in a " + where];
    if (!is_plain) ++counts[escape(byte, offset, where)];
    if (byte >= 0xC0) ++counts[character(byte, where)];
  }
}

// The digits of a finite float, less the zeros at both ends.
std::size_t significant_digits(const JsonValue& value) {
  std::string found;
  for (const char c : naive::json_text(value)) {
    if (c == 'e') break;
    if (std::isdigit(static_cast<unsigned char>(c)) != 0 && (c != '0' || !found.empty())) found += c;
  }
  return found.find_last_not_of('0') + 1;
}

}  // namespace

std::set<std::string> every_class() {
  std::set<std::string> classes = {"indexed object"};
  for (std::size_t count = 3; count <= 13; ++count) classes.insert(digits(count));
  for (const std::string where : {"string", "key"}) {
    classes.insert({"long " + where, "plain run in a " + where});
    for (unsigned char byte = 0xC2; byte <= 0xF4; ++byte) classes.insert(character(byte, where));
    for (std::size_t offset = 0; offset < kOffsets; ++offset) {
      for (const char byte : {'"', '\\', '\n'})
        classes.insert(escape(static_cast<unsigned char>(byte), offset, where));
    }
  }
  return classes;
}

void count_classes(const JsonValue& value, Counts& counts) {
  if (value.string()) count_text(*value.string(), "string", counts);
  if (value.floating()) ++counts[digits(significant_digits(value))];
  if (const auto* list = value.list()) {
    for (const JsonValue& item : *list) count_classes(item, counts);
  }
  if (value.object() == nullptr) return;
  if (value.object()->size() > kUnindexedFields) ++counts["indexed object"];
  for (const auto& [key, member] : *value.object()) {
    count_text(key.view(), "key", counts);
    count_classes(member, counts);
  }
}

}  // namespace vantrex::fuzz

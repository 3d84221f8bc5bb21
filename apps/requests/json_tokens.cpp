#include "requests/json_tokens.h"

#include <array>
#include <clocale>
#include <cstdlib>

#include "vantrex/values/utf8.h"

namespace next_steps_requests {

namespace {

// Moves `at` behind the digits there. Returns whether there are any.
bool skip_digits(const char*& at) noexcept {
  const char* const begin = at;
  while (*at >= '0' && *at <= '9') ++at;
  return at != begin;
}

constexpr std::string_view kHex = "0123456789abcdefABCDEF";
// The bytes that may stand at each place of an escape.
using Pattern = std::array<std::string_view, 6>;
constexpr Pattern kUnit = {"\\", "u", kHex, kHex, kHex, kHex};
constexpr Pattern kHighSurrogate = {"\\", "u", "dD", "89abAB", kHex, kHex};
constexpr Pattern kLowSurrogate = {"\\", "u", "dD", "cdefCDEF", kHex, kHex};

// Returns the offset of the first byte from `at` on that does not fit the pattern, or the end of the text.
std::size_t mismatch(std::string_view text, std::size_t at, const Pattern& pattern) {
  for (const std::string_view bytes : pattern) {
    if (at >= text.size() || bytes.find(text[at]) == std::string_view::npos) break;
    ++at;
  }
  return at;
}
bool matches(std::string_view text, std::size_t at, const Pattern& pattern) {
  return mismatch(text, at, pattern) == at + pattern.size();
}

// Returns the offset of the first escape of a lone surrogate from `at` on.
std::size_t find_lone_surrogate(std::string_view text, std::size_t at) {
  while ((at = text.find('\\', at)) != std::string_view::npos) {
    if (matches(text, at, kLowSurrogate)) break;
    const bool is_high = matches(text, at, kHighSurrogate);
    if (is_high && !matches(text, at + kUnit.size(), kLowSurrogate)) break;
    at += is_high ? 2 * kUnit.size() : 2;
  }
  return at;
}

}  // namespace

NumberScan scan_number(const char* text) noexcept {
  const char* at = text;
  const auto result = [&](bool is_integer, const char* error) {
    return NumberScan{static_cast<std::size_t>(at - text), is_integer, error};
  };
  if (*at == '-') ++at;
  if (*at == '0') {
    ++at;
  } else if (!skip_digits(at)) {
    return result(false, "Invalid value.");
  }
  if (*at != '.' && *at != 'e' && *at != 'E') return result(true, nullptr);
  if (*at == '.' && !skip_digits(++at)) return result(false, "Miss fraction part in number.");
  if (*at == 'e' || *at == 'E') {
    ++at;
    if (*at == '+' || *at == '-') ++at;
    if (!skip_digits(at)) return result(false, "Miss exponent in number.");
  }
  return result(false, nullptr);
}

double nearest_double(const char* number) {
  static const locale_t kCLocale = ::newlocale(LC_ALL_MASK, "C", nullptr);
  return ::strtod_l(number, nullptr, kCLocale);
}

TextFault first_fault(std::string_view text, TextFault parsed, bool checks_encoding) {
  TextFault first = parsed;
  const auto consider = [&first](const TextFault& other) {
    if (other.offset <= first.offset) first = other;
  };
  if (checks_encoding) {
    const std::size_t well_formed = vantrex::values::scan_utf8(text).well_formed;
    if (well_formed < text.size()) consider({well_formed, "ill-formed UTF-8", true});
    const std::size_t lone = find_lone_surrogate(text, 0);
    if (lone < text.size()) consider(escape_fault(text, lone));
  }
  if (text.starts_with("\xEF\xBB\xBF")) consider({0, "byte-order mark before the document", false});
  consider({text.find('\0'), "NUL byte", false});
  return first;
}

TextFault escape_fault(std::string_view text, std::size_t escape) {
  if (text.substr(escape + 1, 1) != "u") return {escape + 1, "Invalid escape character in string.", false};
  const std::size_t end = mismatch(text, escape, kUnit);
  if (end < escape + kUnit.size()) return {end, "Incorrect hex digit after \\u escape in string.", false};
  const bool is_high = matches(text, escape, kHighSurrogate);
  return {is_high ? mismatch(text, end, kLowSurrogate) : mismatch(text, escape, kHighSurrogate),
          "The surrogate pair in string is invalid.", true};
}

void replace_lone_surrogates(std::string& text) {
  constexpr std::string_view kReplacement = "\\ufffd";
  for (std::size_t at = 0; (at = find_lone_surrogate(text, at)) != std::string::npos;
       at += kReplacement.size()) {
    text.replace(at, kReplacement.size(), kReplacement);
  }
}

}  // namespace next_steps_requests

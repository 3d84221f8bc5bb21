#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>
#include <vector>

#include "fuzz/support/naive.h"

namespace vantrex::fuzz::naive {

using values::JsonValue;
using values::Kind;

namespace {

std::string quoted(std::string_view text) {
  std::string out;
  for (const char c : text) {
    const std::size_t letter = std::string_view("\"\\\b\f\n\r\t").find(c);
    if (letter != std::string_view::npos) {
      out += {'\\', "\"\\bfnrt"[letter]};
    } else if (static_cast<unsigned char>(c) < 0x20) {
      char hex[8];
      std::snprintf(hex, sizeof hex, "\\u%04x", static_cast<unsigned>(c));
      out += hex;
    } else {
      out += c;
    }
  }
  return '"' + out + '"';
}

// The fewest digits that read back as `magnitude`, and the power of ten of the first digit.
std::pair<std::string, int> shortest_digits(double magnitude) {
  char text[40] = {};
  std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific);
  std::string digits = text;
  const std::size_t e = digits.find('e');
  const int exponent = std::stoi(digits.substr(e + 1));
  digits.resize(e);
  std::erase(digits, '.');
  return {digits, exponent};
}

std::string float_text(double value) {
  if (std::isnan(value)) return "NaN";
  const std::string sign = std::signbit(value) ? "-" : "";
  if (std::isinf(value)) return sign + "Infinity";
  const auto [digits, exponent] = shortest_digits(std::fabs(value));
  if (exponent < -4 || exponent >= 16) {
    char tail[8];
    std::snprintf(tail, sizeof tail, "e%+03d", exponent);
    return sign + digits.substr(0, 1) + (digits.size() > 1 ? "." + digits.substr(1) : "") + tail;
  }
  if (exponent < 0) return sign + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
  const auto whole = static_cast<std::size_t>(exponent) + 1;
  if (digits.size() <= whole) return sign + digits + std::string(whole - digits.size(), '0') + ".0";
  return sign + digits.substr(0, whole) + "." + digits.substr(whole);
}

}  // namespace

std::string json_text(const JsonValue& value, bool sorted) {
  std::vector<std::pair<std::string, std::string>> fields;
  std::string out;
  switch (value.kind()) {
    case Kind::null:
      return "null";
    case Kind::boolean:
      return *value.boolean() ? "true" : "false";
    case Kind::integer:
      return value.integer()->digits();
    case Kind::floating:
      return float_text(*value.floating());
    case Kind::string:
      return quoted(*value.string());
    case Kind::foreign:
      return quoted(value.foreign()->text_form().view());
    case Kind::list:
      for (const JsonValue& item : *value.list()) out += (out.empty() ? "" : ",") + json_text(item, sorted);
      return "[" + out + "]";
    case Kind::object:
      break;
  }
  for (const auto& [key, member] : *value.object())
    fields.emplace_back(key.view(), json_text(member, sorted));
  if (sorted) std::sort(fields.begin(), fields.end());
  for (const auto& [key, text] : fields) out += (out.empty() ? "" : ",") + quoted(key) + ":" + text;
  return "{" + out + "}";
}

std::string request_text(const Request& request) {
  values::JsonObject line{
      {"response", request.answer}, {"tool", request.tool}, {"freshness", request.freshness}};
  if (request.action) line.set("action", *request.action);
  if (request.arguments) line.set("arguments", *request.arguments);
  if (request.serves) line.set("serves", request.serves->names);
  return json_text(line);
}

}  // namespace vantrex::fuzz::naive

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <utility>
#include <vector>

#include "support/naive.h"

namespace vantrex::tests::naive {

using values::JsonValue;
using values::Kind;

namespace {

std::string quoted(std::string_view text) {
  static const std::map<char, std::string> kEscapes = {{'"', "\\\""}, {'\\', "\\\\"}, {'\b', "\\b"},
                                                       {'\f', "\\f"}, {'\n', "\\n"},  {'\r', "\\r"},
                                                       {'\t', "\\t"}};
  std::string out = "\"";
  for (const char c : text) {
    if (const auto escape = kEscapes.find(c); escape != kEscapes.end()) {
      out += escape->second;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      char hex[8];
      std::snprintf(hex, sizeof hex, "\\u%04x", static_cast<unsigned>(c));
      out += hex;
    } else {
      out += c;
    }
  }
  return out + '"';
}

// The shortest digits that read back as `magnitude`, and the power of ten of
// the first. Of each length the nearest digits are tried, then their neighbours:
// at a power of two the nearest may miss where a neighbour hits.
std::pair<std::string, int> shortest_digits(double magnitude) {
  for (int precision = 0;; ++precision) {
    char text[40];
    std::snprintf(text, sizeof text, "%.*e", precision, magnitude);
    const std::string scientific = text;
    const std::size_t e = scientific.find('e');
    const int exponent = std::atoi(text + e + 1) - precision;
    std::string nearest = scientific.substr(0, e);
    std::erase(nearest, '.');
    for (const std::int64_t offset : {0, 1, -1}) {
      std::string digits = std::to_string(std::stoll(nearest) + offset);
      if (std::strtod((digits + "e" + std::to_string(exponent)).c_str(), nullptr) != magnitude) continue;
      const int first = exponent + static_cast<int>(digits.size()) - 1;
      digits.erase(std::max(digits.find_last_not_of('0') + 1, std::size_t{1}));
      return {digits, first};
    }
  }
}

std::string float_text(double value) {
  if (std::isnan(value)) return "NaN";
  const std::string sign = std::signbit(value) ? "-" : "";
  if (std::isinf(value)) return sign + "Infinity";
  auto [digits, exponent] = value == 0 ? std::pair(std::string("0"), 0) : shortest_digits(std::fabs(value));
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
    case Kind::list: {
      std::string out;
      for (const JsonValue& item : *value.list()) out += (out.empty() ? "" : ",") + json_text(item, sorted);
      return "[" + out + "]";
    }
    case Kind::object:
      break;
  }
  std::vector<std::pair<std::string, std::string>> fields;
  for (const auto& [key, member] : *value.object())
    fields.emplace_back(key.view(), json_text(member, sorted));
  if (sorted) std::sort(fields.begin(), fields.end());
  std::string out;
  for (const auto& [key, member] : fields) out += (out.empty() ? "" : ",") + quoted(key) + ":" + member;
  return "{" + out + "}";
}

}  // namespace vantrex::tests::naive

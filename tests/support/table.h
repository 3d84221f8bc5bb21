// Values and tables of test cases as text.
#pragma once

#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/values/json_value.h"

namespace vantrex::tests {

// The value of a JSON text, read by nlohmann's parser.
values::JsonValue parse(std::string_view text);
values::JsonObject parse_object(std::string_view text);

// The cells of each line of `text`: "one | two". Blank lines and lines that begin with "#" are skipped.
inline std::vector<std::vector<std::string>> table(const std::string& text) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line.front() == '#') continue;
    rows.emplace_back();
    for (std::size_t end = 0; end != std::string::npos;
         line.erase(0, end == std::string::npos ? end : end + 3)) {
      end = line.find(" | ");
      rows.back().push_back(line.substr(0, end));
    }
  }
  return rows;
}

// The calls of an answer's steps: "symbol{"fqn":"f"} status{}", or "none".
std::string calls_of(const values::JsonObject& answer);

// `text` with each `mark` replaced by `by`.
std::string replaced(std::string text, std::string_view mark, std::string_view by);

// The words of `text`, separated by white space.
inline std::vector<std::string> words(const std::string& text) {
  std::istringstream stream(text);
  return {std::istream_iterator<std::string>(stream), {}};
}

}  // namespace vantrex::tests

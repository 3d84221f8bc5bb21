// The inputs whose growth is counted. An input is one unit, repeated until the text has the wanted size.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vantrex::growth {

// What the text of an input is.
enum class Kind : std::uint8_t {
  name,    // any bytes: a name, a path, a query
  answer,  // a JSON object
  line,    // a line of a batch, or a message to the server of tools
  index,   // the lines of an index
  control  // the input of a quadratic call, which must be found out
};

struct Input {
  Kind kind;
  const char* name;
  // The text is `before`, many times `unit`, `middle`, as many times `closing`, and `after`. In a unit, "$n"
  // stands for a number that increases, and "$c" for the next of many texts with the same std::hash.
  std::string_view unit;
  std::string_view before = "";
  std::string_view middle = "";
  std::string_view closing = "";
  std::string_view after = "";
};

std::span<const Input> inputs();

// The text of `input` with about `bytes` bytes.
std::string text_of(const Input& input, std::size_t bytes);

}  // namespace vantrex::growth

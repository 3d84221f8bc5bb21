// A line with some of its values replaced.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace next_steps_proxy {

struct NewValue {
  std::string_view old;  // a span of the line
  std::string text;
};

// Returns `line` with the new values in place of the old ones, which do not overlap. Throws std::bad_alloc.
std::string spliced_line(std::string_view line, std::vector<NewValue> values);

}  // namespace next_steps_proxy

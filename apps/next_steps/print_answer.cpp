#include "next_steps/print_answer.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "requests/output.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_program {

std::string pretty_text(const values::JsonValue& value) {
  // Deeper levels are indented like this one; otherwise the size of the text would be quadratic in the depth.
  constexpr std::size_t kDeepestIndent = 100;
  std::string text;
  std::size_t depth = 0;
  const auto new_line = [&] { text.append(1, '\n').append(2 * std::min(depth, kDeepestIndent), ' '); };
  char previous = '\0';  // outside strings
  bool in_string = false;
  bool is_escaped = false;
  for (const char byte : compact_text(value)) {
    if (in_string) {
      text += byte;
      in_string = is_escaped || byte != '"';
      is_escaped = byte == '\\' && !is_escaped;
      continue;
    }
    const bool closes = byte == ']' || byte == '}';
    const bool is_after_opening = previous == '[' || previous == '{';
    if (closes) --depth;
    if (closes != is_after_opening) new_line();  // an empty container stays on its line
    text += byte;
    if (byte == '[' || byte == '{') ++depth;
    if (byte == ',') new_line();
    if (byte == ':') text += ' ';
    in_string = byte == '"';
    previous = byte;
  }
  return text;
}

void print_answer(values::JsonObject answer, bool pretty) {
  requests::print(
      (pretty ? pretty_text(std::move(answer)) : vantrex::tool_handlers::tool_result_text(answer)) + '\n');
}

}  // namespace next_steps_program

#include "next_steps/output.h"

#include <cstddef>
#include <unistd.h>
#include <utility>

#include "next_steps/failures.h"
#include "next_steps/pretty_text.h"
#include "next_steps/repeatable.h"
#include "vantrex/tool_handlers/tool_result.h"

namespace next_steps_program {

void Output::write(std::string_view text) {
  constexpr std::size_t kEnough = std::size_t{64} * 1024;
  waiting_ += text;
  if (waiting_.size() >= kEnough) flush();
}

void Output::flush() {
  std::string_view rest = waiting_;
  while (!rest.empty()) {
    const ssize_t count = ::write(STDOUT_FILENO, rest.data(), rest.size());
    if (count < 0 && !can_repeat(STDOUT_FILENO, POLLOUT)) throw IoFailed("standard output");
    if (count > 0) rest.remove_prefix(static_cast<std::size_t>(count));
  }
  waiting_.clear();
}

void print_answer(vantrex::values::JsonObject answer, bool pretty) {
  Output output;
  output.write(pretty ? pretty_text(std::move(answer)) : vantrex::tool_handlers::tool_result_text(answer));
  output.write("\n");
  output.flush();
}

}  // namespace next_steps_program

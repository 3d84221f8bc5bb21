#include "requests/output.h"

#include <cstddef>
#include <unistd.h>

#include "requests/failures.h"

namespace next_steps_requests {

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

void print(std::string_view text) {
  Output output;
  output.write(text);
  output.flush();
}

}  // namespace next_steps_requests

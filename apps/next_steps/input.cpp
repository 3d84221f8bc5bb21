#include "next_steps/input.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

#include "next_steps/failures.h"

namespace next_steps_program {

namespace {
constexpr std::size_t kReadSize = std::size_t{64} * 1024;
}

Input::Input(const std::string& file, std::string_view awaited) : name_(file) {
  if (file.empty() || file == "-") {
    name_ = "<stdin>";
    if (::isatty(STDIN_FILENO) == 1) {
      std::cerr << "next-steps: waiting for " << awaited << " on standard input; Ctrl-D ends it\n";
    }
    return;
  }
  descriptor_ = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);  // NOLINT(*-vararg)
  if (descriptor_ < 0) throw IoFailed(name_);
}

Input::~Input() {
  if (descriptor_ != STDIN_FILENO) ::close(descriptor_);
}

bool Input::read_some(std::string& buffer) {
  const std::size_t size = buffer.size();
  buffer.resize(size + kReadSize);
  ssize_t count = 0;
  do {
    count = ::read(descriptor_, buffer.data() + size, kReadSize);
  } while (count < 0 && errno == EINTR);
  if (count < 0) throw IoFailed(name_);
  buffer.resize(size + static_cast<std::size_t>(count));
  return count > 0;
}

std::string Input::read_all() {
  std::string text;
  while (read_some(text)) {
  }
  return text;
}

std::optional<std::string_view> LineReader::next() {
  do {
    const std::size_t end = buffer_.find('\n', searched_);
    if (end != std::string::npos) return take(end);
    searched_ = buffer_.size();
  } while (refill());
  if (begin_ == buffer_.size()) return std::nullopt;
  return take(buffer_.size());
}

std::string_view LineReader::take(std::size_t end) {
  const std::string_view line = std::string_view(buffer_).substr(begin_, end - begin_);
  begin_ = searched_ = std::min(end + 1, buffer_.size());
  ++line_number_;
  return line;
}

bool LineReader::refill() {
  buffer_.erase(0, begin_);
  searched_ -= begin_;
  begin_ = 0;
  before_waiting_();
  return input_.read_some(buffer_);
}

}  // namespace next_steps_program

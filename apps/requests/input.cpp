#include "requests/input.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

#include <sys/stat.h>

#include "requests/failures.h"

namespace next_steps_requests {

namespace {

constexpr std::size_t kReadSize = std::size_t{64} * 1024;

// Opens a file. Its descriptor is never that of a standard stream, not even of one that is closed.
int opened(const std::string& file, int flags) {
  const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | flags);  // NOLINT(*-vararg)
  if (descriptor < 0) throw IoFailed(file);
  if (descriptor > STDERR_FILENO) return descriptor;
  const int moved = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);  // NOLINT(*-vararg)
  if (moved < 0) throw IoFailed(file);
  ::close(descriptor);
  return moved;
}

}  // namespace

Input::Input(const std::string& file) : name_(file) {
  if (file.empty() || file == "-") {
    name_ = "<stdin>";
  } else {
    descriptor_ = opened(file, 0);
  }
}

Input::Input(const RegularFile& file) : Input(file.name, opened(file.name, O_NONBLOCK)) {
  struct stat found = {};
  if (::fstat(descriptor_, &found) != 0) throw IoFailed(name_);
  if (!S_ISREG(found.st_mode)) throw InputRejected(name_, "must be a regular file");
}

Input::~Input() {
  if (descriptor_ != STDIN_FILENO) ::close(descriptor_);
}

bool Input::is_terminal() const noexcept {
  return ::isatty(descriptor_) == 1;
}

bool Input::read_some(std::string& buffer) {
  const std::size_t size = buffer.size();
  buffer.resize(size + kReadSize);
  ssize_t count = 0;
  do {
    count = ::read(descriptor_, buffer.data() + size, kReadSize);
  } while (count < 0 && can_repeat(descriptor_, POLLIN));
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
  is_terminated_ = end < buffer_.size();
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

}  // namespace next_steps_requests

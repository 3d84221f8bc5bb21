#include "proxy/line_pump.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

#include <sys/socket.h>
#include <sys/stat.h>

#include "proxy/names.h"
#include "requests/json_reader.h"

namespace next_steps_proxy {

Sink::Sink(int descriptor) : descriptor_(descriptor) {
  struct stat found = {};
  ::fstat(descriptor, &found);
  is_socket_ = S_ISSOCK(found.st_mode);
  may_wait_ = (::fcntl(descriptor, F_GETFL) & O_NONBLOCK) == 0;  // NOLINT(*-vararg)
  if (!may_wait_ || !S_ISFIFO(found.st_mode)) return;
  // A pipe that is opened again has flags of its own.
  const std::string name = "/proc/self/fd/" + std::to_string(descriptor);
  const int own = ::open(name.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);  // NOLINT(*-vararg)
  if (own < 0) return;
  descriptor_ = own;
  may_wait_ = false;
}

std::ptrdiff_t Sink::write_some(std::string_view bytes) const noexcept {
  if (is_socket_) return ::send(descriptor_, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  // When there is room at all, there is room for so much.
  return ::write(descriptor_, bytes.data(),
                 may_wait_ ? std::min<std::size_t>(bytes.size(), PIPE_BUF) : bytes.size());
}

void LinePump::read() {
  const std::size_t size = buffer_.size();
  buffer_.resize(size + kReadSize);
  const ssize_t count = ::read(source_, buffer_.data() + size, kReadSize);
  buffer_.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  if (count == 0 || (count < 0 && errno != EAGAIN && errno != EINTR)) return end();
  is_broken_ ? buffer_.clear() : pass_lines();
}

void LinePump::pass_lines() {
  std::size_t end = 0;
  while ((end = buffer_.find('\n', std::max(ready_, searched_))) != std::string::npos) {
    ready_ += rewrite_line(end - ready_) + 1;
  }
  searched_ = buffer_.size();
}

// Rewrites the line of `size` bytes at ready_, and returns its new size.
std::size_t LinePump::rewrite_line(std::size_t size) {
  try {
    const std::optional<std::string> changed = rewrite_({buffer_.data() + ready_, size});
    if (!changed) return size;
    buffer_.replace(ready_, size, *changed);
    return changed->size();
  } catch (const requests::JsonError&) {  // it is no message
  } catch (const std::exception& error) {
    if (!has_warned_) std::cerr << "next-steps: an answer is passed on as it came: " << error.what() << '\n';
    has_warned_ = true;
  }
  return size;
}

void LinePump::write() {
  const ssize_t count = sink_.write_some({buffer_.data() + written_, ready_ - written_});
  if (count < 0 && errno != EAGAIN && errno != EINTR) return break_off();
  written_ += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
  forget_written();
}

// Frees the written bytes once they are the larger part, so that no byte is moved often.
void LinePump::forget_written() noexcept {
  if (written_ < buffer_.size() - written_) return;
  buffer_.erase(0, written_);
  ready_ -= written_;
  searched_ -= std::min(searched_, written_);
  written_ = 0;
  if (buffer_.empty() && buffer_.capacity() > 4 * kMaxReady) buffer_ = std::string();
}

void LinePump::end() noexcept {
  has_ended_ = true;
  ready_ = buffer_.size();
}

void LinePump::break_off() noexcept {
  is_broken_ = true;
  buffer_.clear();
  written_ = ready_ = searched_ = 0;
}

}  // namespace next_steps_proxy

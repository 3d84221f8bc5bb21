#include "proxy/line_pump.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <iostream>
#include <new>
#include <unistd.h>
#include <utility>

#include <sys/socket.h>

#include "proxy/names.h"
#include "requests/json_reader.h"

namespace next_steps_proxy {

namespace {

constexpr std::size_t kReadSize = std::size_t{64} << 10;
constexpr std::size_t kKeptSize = std::size_t{1} << 20;

bool is_temporary(int error) noexcept {
  return error == EAGAIN || error == EINTR;
}

}  // namespace

LinePump::LinePump(int source, int sink, Rewrite rewrite)
    : source_(source), sink_(sink), rewrite_(std::move(rewrite)) {}

bool LinePump::read() {
  try {
    buffer_.reserve(buffer_.size() + kReadSize);
  } catch (const std::bad_alloc& error) {
    if (buffer_.empty()) throw;
    warn(error.what());
    is_split_ = true;
    ready_ = buffer_.size();
    return false;
  }
  const std::size_t size = buffer_.size();
  buffer_.resize(size + kReadSize);
  const ssize_t count = ::read(source_, buffer_.data() + size, kReadSize);
  const bool is_end = count == 0 || (count < 0 && !is_temporary(errno));
  buffer_.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  if (is_dropped_) {
    drop();
  } else {
    rewrite_lines();
  }
  if (is_end) end();
  return true;
}

void LinePump::rewrite_lines() {
  std::size_t end = 0;
  while ((end = buffer_.find('\n', searched_)) != std::string::npos) {
    ready_ += (std::exchange(is_split_, false) ? end - ready_ : rewrite_line(end - ready_)) + 1;
    searched_ = ready_;  // the new line may be shorter
  }
  searched_ = buffer_.size();
  if (is_split_) ready_ = searched_;
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
    warn(error.what());
  }
  return size;
}

void LinePump::warn(const char* reason) {
  if (!std::exchange(has_warned_, true))
    std::cerr << "next-steps: a line is passed on as it came: " << reason << '\n';
}

bool LinePump::write() noexcept {
  const char* const rest = buffer_.data() + written_;
  const std::size_t size = ready_ - written_;
  ssize_t count = ::send(sink_, rest, size, MSG_DONTWAIT);
  // A pipe that is ready takes PIPE_BUF bytes at once, also if it may block.
  if (count < 0 && errno == ENOTSOCK) count = ::write(sink_, rest, std::min<std::size_t>(size, PIPE_BUF));
  if (count < 0) return is_temporary(errno);
  written_ += static_cast<std::size_t>(count);
  if (written_ < ready_) return true;
  buffer_.erase(0, ready_);
  searched_ = buffer_.size();
  written_ = ready_ = 0;
  if (buffer_.empty() && buffer_.capacity() > kKeptSize) buffer_ = std::string();
  return true;
}

void LinePump::end() noexcept {
  has_ended_ = true;
  ready_ = buffer_.size();
}

void LinePump::drop() noexcept {
  is_dropped_ = true;
  buffer_.clear();
  written_ = ready_ = searched_ = 0;
}

}  // namespace next_steps_proxy

#include "proxy/line_pump.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iostream>
#include <new>
#include <poll.h>
#include <unistd.h>
#include <utility>

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

void LinePump::run(const std::function<void()>& on_break) {
  bool is_broken = false;
  while (read()) {
    if (!is_broken) rewrite_lines();
    if (is_broken || !write(ready_)) {
      if (!std::exchange(is_broken, true)) on_break();
      buffer_.clear();
    }
    ready_ = 0;
    searched_ = buffer_.size();
  }
  if (!is_broken) write(buffer_.size());
}

// Returns false if the stream is not ready and the pump is to stop.
bool LinePump::wait_for(int stream, std::int16_t events) const noexcept {
  std::array<pollfd, 2> awaited{{{stream, events, 0}, {streams_.stop, POLLIN, 0}}};
  if (streams_.drains && events == POLLOUT) awaited[1].fd = -1;
  while (::poll(awaited.data(), awaited.size(), -1) < 0 && is_temporary(errno)) {
  }
  return awaited[1].revents == 0 || (streams_.drains && awaited[0].revents != 0);
}

// Returns false at the end.
bool LinePump::read() {
  try {
    buffer_.reserve(buffer_.size() + kReadSize);
  } catch (const std::bad_alloc&) {  // the part of the line that is there passes
    if (!write(std::exchange(searched_, 0))) return false;
  }
  const std::size_t size = buffer_.size();
  buffer_.resize(size + kReadSize);
  ssize_t count = 0;
  do {
    count = wait_for(streams_.source, POLLIN) ? ::read(streams_.source, buffer_.data() + size, kReadSize) : 0;
  } while (count < 0 && is_temporary(errno));
  buffer_.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  return count > 0;
}

void LinePump::rewrite_lines() {
  std::size_t end = 0;
  while ((end = buffer_.find('\n', searched_)) != std::string::npos) {
    ready_ += rewrite_line(end - ready_) + 1;
    searched_ = ready_;  // the new line may be shorter
  }
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
    if (!std::exchange(has_warned_, true)) {
      std::cerr << "next-steps: an answer is passed on as it came: " << error.what() << '\n';
    }
  }
  return size;
}

// Writes and forgets the first `size` bytes. Returns false if nobody reads them.
bool LinePump::write(std::size_t size) {
  std::string_view rest = std::string_view(buffer_).substr(0, size);
  while (!rest.empty()) {
    const ssize_t count = ::write(streams_.sink, rest.data(), rest.size());
    if (count < 0 && !(is_temporary(errno) && wait_for(streams_.sink, POLLOUT))) return false;
    rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  }
  buffer_.erase(0, size);
  if (buffer_.empty() && buffer_.capacity() > kKeptSize) buffer_ = std::string();
  return true;
}

}  // namespace next_steps_proxy

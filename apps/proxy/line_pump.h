// Passes lines from one stream to another, in one direction.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace next_steps_proxy {

// A stream that is written without waiting. Its flags are not changed, as others may share it.
class Sink {
 public:
  // Does not own the descriptor.
  explicit Sink(int descriptor);

  int descriptor() const noexcept { return descriptor_; }
  // As write(2); fails with EAGAIN when it would wait.
  std::ptrdiff_t write_some(std::string_view bytes) const noexcept;

 private:
  int descriptor_;
  bool is_socket_ = false;
  bool may_wait_ = false;
};

class LinePump {
 public:
  // Returns what to pass on in place of a line, without its line feed, or nothing for the line itself. If it
  // throws JsonError, the line is passed on, too; after another exception with a warning, once.
  using Rewrite = std::function<std::optional<std::string>(std::string_view line)>;

  // Does not own the streams.
  LinePump(int source, Sink sink, Rewrite rewrite)
      : source_(source), sink_(sink), rewrite_(std::move(rewrite)) {}

  int sink() const noexcept { return sink_.descriptor(); }
  // What to wait for.
  bool wants_input() const noexcept { return !has_ended_ && ready_ - written_ < kMaxReady; }
  bool has_output() const noexcept { return written_ < ready_; }
  // Whether everything is passed on.
  bool is_done() const noexcept { return has_ended_ && !has_output(); }
  bool has_ended() const noexcept { return has_ended_; }
  bool is_broken() const noexcept { return is_broken_; }

  // Reads once, when the source has bytes or an end. Throws std::bad_alloc.
  void read();
  // Writes once, when the sink has room.
  void write();
  // Takes no more input. The bytes after the last line are passed on.
  void end() noexcept;
  // Drops what is read from now on: nobody reads the sink.
  void break_off() noexcept;

 private:
  static constexpr std::size_t kMaxReady = std::size_t{1} << 20;
  static constexpr std::size_t kReadSize = std::size_t{256} << 10;

  void pass_lines();
  std::size_t rewrite_line(std::size_t size);
  void forget_written() noexcept;

  int source_;
  Sink sink_;
  Rewrite rewrite_;
  std::string buffer_;
  std::size_t written_ = 0;   // the bytes up to here have been written
  std::size_t ready_ = 0;     // whole lines, to be written
  std::size_t searched_ = 0;  // there is no line feed from ready_ to here
  bool has_ended_ = false;
  bool is_broken_ = false;
  bool has_warned_ = false;
};

}  // namespace next_steps_proxy

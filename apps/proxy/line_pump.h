// Passes lines from one stream to another, in one direction.
//
// Nothing here waits: the owner polls the streams and says when they are ready. Owns neither stream, and
// changes no flags, as others may share them. Threads: one at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace next_steps_proxy {

class LinePump {
 public:
  // Returns what to pass on in place of a line, without its line feed, or nothing for the line itself. If it
  // throws JsonError, the line is passed on, too; after another exception with a warning, once.
  using Rewrite = std::function<std::optional<std::string>(std::string_view line)>;

  LinePump(int source, int sink, Rewrite rewrite);

  bool wants_to_write() const noexcept { return written_ < ready_; }
  bool wants_to_read() const noexcept { return !has_ended_ && !wants_to_write(); }
  bool has_ended() const noexcept { return has_ended_; }
  bool is_done() const noexcept { return has_ended_ && !wants_to_write(); }

  // Reads what the source has; it must be ready. Returns false if there is no memory for the rest of a line:
  // that line is passed on as it comes, with the warning. Throws std::bad_alloc.
  bool read();
  // Writes some of what waits; the sink must be ready. Returns false if nobody reads it any more.
  bool write() noexcept;
  // Reads no more. The bytes after the last line are still to be passed on.
  void end() noexcept;
  // Forgets what waits, and drops all that is read later.
  void drop() noexcept;

 private:
  void rewrite_lines();
  std::size_t rewrite_line(std::size_t size);
  void warn(const char* reason);

  int source_;
  int sink_;
  Rewrite rewrite_;
  std::string buffer_;
  std::size_t written_ = 0;
  std::size_t ready_ = 0;     // the end of what is to be written
  std::size_t searched_ = 0;  // there is no line feed from ready_ to here
  bool is_split_ = false;     // whether a part of the line that comes is passed on already
  bool has_ended_ = false;
  bool is_dropped_ = false;
  bool has_warned_ = false;
};

}  // namespace next_steps_proxy

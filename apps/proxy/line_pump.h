// Passes lines from one stream to another, in one direction.
//
// Owns neither stream, and changes no flags, as others may share them. Threads: one for each pump.
#pragma once

#include <cstddef>
#include <cstdint>
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

  struct Streams {
    int source;
    int sink;
    int stop;     // has bytes or an end as soon as the pump is to stop
    bool drains;  // whether to pass on first what the source has, and then to wait for the sink
  };

  LinePump(const Streams& streams, Rewrite rewrite) : streams_(streams), rewrite_(std::move(rewrite)) {}

  // Passes lines on until the source ends, and then the bytes after the last line. Calls `on_break` if nobody
  // reads the sink any more; what is read later is dropped. Throws std::bad_alloc.
  void run(const std::function<void()>& on_break);

 private:
  bool wait_for(int stream, std::int16_t events) const noexcept;
  bool read();
  void rewrite_lines();
  std::size_t rewrite_line(std::size_t size);
  bool write(std::size_t size);

  Streams streams_;
  Rewrite rewrite_;
  std::string buffer_;
  std::size_t ready_ = 0;     // the end of the lines that are rewritten
  std::size_t searched_ = 0;  // there is no line feed from ready_ to here
  bool has_warned_ = false;
};

}  // namespace next_steps_proxy

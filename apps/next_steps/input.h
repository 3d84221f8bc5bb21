// Reading the program's input.
//
// Ownership: an Input holds its file open; it must outlive what reads from it.
// Threads: one at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace next_steps_program {

class Input {
 public:
  // Opens `file`; "-" and "" are standard input. When that is a terminal, says
  // on standard error that `awaited` is waited for. Throws IoFailed.
  Input(const std::string& file, std::string_view awaited);
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  ~Input();

  // What messages call it: the file as it was given, or "<stdin>".
  const std::string& name() const noexcept { return name_; }

  // Waits for bytes and appends them to `buffer`; false at the end of the
  // input. Throws IoFailed and std::bad_alloc.
  bool read_some(std::string& buffer);
  // The same, up to the end.
  std::string read_all();

 private:
  std::string name_;
  int descriptor_ = 0;  // standard input, unless a file was opened
};

// The lines of an input, holding no more in memory than the longest one.
class LineReader {
 public:
  // `before_waiting` is called each time before input is waited for.
  LineReader(Input& input, std::function<void()> before_waiting)
      : input_(input), before_waiting_(std::move(before_waiting)) {}

  // The next line without its line feed, valid until the next call; nothing at
  // the end. Throws what Input and `before_waiting` throw.
  std::optional<std::string_view> next();

  // The number of the line that next() gave last, from 1.
  std::size_t line_number() const noexcept { return line_number_; }

 private:
  std::string_view take(std::size_t end);
  bool refill();

  Input& input_;
  std::function<void()> before_waiting_;
  std::string buffer_;
  std::size_t begin_ = 0;     // where the next line begins
  std::size_t searched_ = 0;  // no line feed from begin_ up to here
  std::size_t line_number_ = 0;
};

}  // namespace next_steps_program

// Reading a file or standard input.
//
// Ownership: an Input owns its open file and must outlive its LineReader. Threads: one at a
// time.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace next_steps_requests {

// The name of a file that must not be a pipe, a terminal or a device.
struct RegularFile {
  std::string name;
};

class Input {
 public:
  // Opens `file`; "-" and "" are standard input. Throws IoFailed.
  explicit Input(const std::string& file);
  // Opens a file that must be a regular one, so that nothing is ever waited for. Throws InputRejected and
  // IoFailed.
  explicit Input(const RegularFile& file);
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;
  ~Input();

  // The name for messages: the file as given, or "<stdin>".
  const std::string& name() const noexcept { return name_; }

  // Whether somebody types it.
  bool is_terminal() const noexcept;

  // Waits until there are bytes, and appends them to `buffer`. Returns false at the end of
  // the input. Throws IoFailed and std::bad_alloc.
  bool read_some(std::string& buffer);
  // Reads up to the end of the input. Throws like read_some.
  std::string read_all();

 private:
  Input(std::string name, int descriptor) : name_(std::move(name)), descriptor_(descriptor) {}

  std::string name_;
  int descriptor_ = 0;  // standard input, unless a file was opened
};

// The lines of an input. Its memory depends on the longest line, not on the size of the input.
class LineReader {
 public:
  // `before_waiting` is called each time before reading may block.
  LineReader(Input& input, std::function<void()> before_waiting)
      : input_(input), before_waiting_(std::move(before_waiting)) {}

  // Returns the next line without its line feed, valid until the next call, or nothing at
  // the end. Throws what Input and `before_waiting` throw.
  std::optional<std::string_view> next();

  // The number of the line that next() returned last, from 1.
  std::size_t line_number() const noexcept { return line_number_; }
  // Whether that line ended with a line feed.
  bool is_terminated() const noexcept { return is_terminated_; }

 private:
  std::string_view take(std::size_t end);
  bool refill();

  Input& input_;
  std::function<void()> before_waiting_;
  std::string buffer_;
  std::size_t begin_ = 0;     // offset of the next line
  std::size_t searched_ = 0;  // there is no line feed in [begin_, searched_)
  std::size_t line_number_ = 0;
  bool is_terminated_ = false;
};

}  // namespace next_steps_requests

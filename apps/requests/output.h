// Writes to standard output and reports every failure.
#pragma once

#include <string>
#include <string_view>

namespace next_steps_requests {

// Buffers what is written. The destructor does not flush. Threads: one at a time.
class Output {
 public:
  // Throws IoFailed and std::bad_alloc.
  void write(std::string_view text);
  // Writes the buffer to standard output and empties it. Throws IoFailed, for example when the disk is full.
  void flush();

 private:
  std::string waiting_;
};

// Writes `text` to standard output at once. Throws like Output.
void print(std::string_view text);

}  // namespace next_steps_requests

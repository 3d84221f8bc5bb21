// A tool server that runs as a child process.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace next_steps_proxy {

// The server's standard input and output are pipes; everything else it inherits. It has a process group of
// its own. The destructor closes the pipes.
class ChildProcess {
 public:
  // Starts the program and its arguments without a shell; it is searched for in PATH. `mask` is its signal
  // mask. Throws IoFailed and std::bad_alloc.
  ChildProcess(const std::vector<std::string>& command, const sigset_t& mask);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  // The ends of the pipes, which do not wait.
  int input() const noexcept { return input_; }
  int output() const noexcept { return output_; }
  void close_input() noexcept;

  // Sends a signal to the process group.
  void send_signal(int signal) const noexcept;

  // The exit status, or 128 + n after signal n; nothing while the server runs.
  std::optional<int> exit_status() const noexcept;

 private:
  int input_ = -1;
  int output_ = -1;
  pid_t process_ = 0;
};

}  // namespace next_steps_proxy

// A tool server that runs as a child process.
#pragma once

#include <array>
#include <csignal>
#include <optional>
#include <string>
#include <vector>

namespace next_steps_proxy {

// A pipe, which is not passed on to other programs. The destructor closes both ends.
class Pipe {
 public:
  Pipe();  // throws IoFailed
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe();

  int source() const noexcept { return ends_[0]; }
  int sink() const noexcept { return ends_[1]; }
  void close_source() noexcept { close(0); }
  void close_sink() noexcept { close(1); }

 private:
  void close(std::size_t end) noexcept;

  std::array<int, 2> ends_{};
};

// The server's standard input and output are pipes; everything else it inherits. It has a process group of
// its own.
class ChildProcess {
 public:
  // Starts the program and its arguments without a shell; it is searched for in PATH. `mask` is its signal
  // mask. Throws IoFailed and std::bad_alloc.
  ChildProcess(const std::vector<std::string>& command, const sigset_t& mask);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  // Ends the server with SIGTERM if it still runs.
  ~ChildProcess() {
    if (!exit_status()) send_signal(SIGTERM);
  }

  // Where to write and where to read.
  int input() const noexcept { return input_.sink(); }
  int output() const noexcept { return output_.source(); }
  void close_input() noexcept { input_.close_sink(); }

  // Sends a signal to the process group.
  void send_signal(int signal) const noexcept { ::kill(-process_, signal); }

  // The exit status, or 128 + n after signal n; nothing while the server runs.
  std::optional<int> exit_status() const noexcept;

 private:
  Pipe input_;
  Pipe output_;
  pid_t process_ = 0;
};

}  // namespace next_steps_proxy

#include "proxy/child_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <sys/wait.h>

#include "proxy/names.h"
#include "requests/failures.h"

namespace next_steps_proxy {

namespace {

// Returns the end for reading and the end for writing, of which `own` does not wait.
std::array<int, 2> opened_pipe(std::size_t own) {
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw requests::IoFailed("a pipe");
  ::fcntl(ends[own], F_SETFL, O_NONBLOCK);  // NOLINT(*-vararg)
  return ends;
}

}  // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, const sigset_t& mask) {
  std::vector<char*> words;
  for (const std::string& word : command)
    words.push_back(const_cast<char*>(word.c_str()));  // NOLINT(*-const-cast)
  words.push_back(nullptr);
  const std::array<int, 2> to_server = opened_pipe(1);
  const std::array<int, 2> from_server = opened_pipe(0);
  input_ = to_server[1];
  output_ = from_server[0];

  posix_spawn_file_actions_t files;
  ::posix_spawn_file_actions_init(&files);
  ::posix_spawn_file_actions_adddup2(&files, to_server[0], STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&files, from_server[1], STDOUT_FILENO);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  ::posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  ::posix_spawnattr_setsigmask(&attributes, &mask);
  sigset_t broken_pipe;
  ::sigemptyset(&broken_pipe);
  ::sigaddset(&broken_pipe, SIGPIPE);
  ::posix_spawnattr_setsigdefault(&attributes, &broken_pipe);
  errno = ::posix_spawnp(&process_, words.front(), &files, &attributes, words.data(), environ);
  const bool has_started = errno == 0;
  const requests::IoFailed failure(command.front());
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&files);
  ::close(to_server[0]);
  ::close(from_server[1]);
  if (!has_started) throw failure;
}

ChildProcess::~ChildProcess() {
  close_input();
  ::close(output_);
}

void ChildProcess::close_input() noexcept {
  if (input_ >= 0) ::close(input_);
  input_ = -1;
}

void ChildProcess::send_signal(int signal) const noexcept {
  ::kill(-process_, signal);
}

std::optional<int> ChildProcess::exit_status() const noexcept {
  siginfo_t ending = {};
  // The process is left as a zombie, so that no other one gets its number.
  ::waitid(P_PID, static_cast<id_t>(process_), &ending, WEXITED | WNOHANG | WNOWAIT);
  if (ending.si_pid == 0) return std::nullopt;
  return ending.si_code == CLD_EXITED ? ending.si_status : 128 + ending.si_status;
}

}  // namespace next_steps_proxy

#include "proxy/child_process.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <sys/wait.h>

#include "proxy/names.h"
#include "requests/failures.h"

namespace next_steps_proxy {

Pipe::Pipe() {
  if (::pipe2(ends_.data(), O_CLOEXEC) != 0) throw requests::IoFailed("a pipe");
  ::fcntl(sink(), F_SETPIPE_SZ, 1 << 18);  // NOLINT(*-vararg): faster, if it is allowed
}

Pipe::~Pipe() {
  close_source();
  close_sink();
}

void Pipe::close(std::size_t end) noexcept {
  if (ends_[end] >= 0) ::close(ends_[end]);
  ends_[end] = -1;
}

ChildProcess::ChildProcess(const std::vector<std::string>& command, const sigset_t& mask) {
  std::vector<char*> words(command.size() + 1);  // the last one stays null
  std::transform(command.begin(), command.end(), words.begin(), [](const std::string& word) {
    return const_cast<char*>(word.c_str());  // NOLINT(*-const-cast): posix_spawn does not change it
  });
  sigset_t ignored;
  ::sigemptyset(&ignored);
  for (const int each : {SIGPIPE, SIGXFSZ}) ::sigaddset(&ignored, each);
  posix_spawn_file_actions_t files;
  ::posix_spawn_file_actions_init(&files);
  ::posix_spawn_file_actions_adddup2(&files, input_.source(), STDIN_FILENO);
  ::posix_spawn_file_actions_adddup2(&files, output_.sink(), STDOUT_FILENO);
  posix_spawnattr_t attributes;
  ::posix_spawnattr_init(&attributes);
  ::posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  ::posix_spawnattr_setsigmask(&attributes, &mask);
  ::posix_spawnattr_setsigdefault(&attributes, &ignored);
  const int error = ::posix_spawnp(&process_, words.front(), &files, &attributes, words.data(), environ);
  ::posix_spawnattr_destroy(&attributes);
  ::posix_spawn_file_actions_destroy(&files);
  errno = error;
  if (error != 0) throw requests::IoFailed(command.front());
  input_.close_source();
  output_.close_sink();
}

std::optional<int> ChildProcess::exit_status() const noexcept {
  siginfo_t ending = {};
  // The process is left as a zombie, so that no other one gets its number.
  ::waitid(P_PID, static_cast<id_t>(process_), &ending, WEXITED | WNOHANG | WNOWAIT);
  if (ending.si_pid == 0) return std::nullopt;
  return ending.si_code == CLD_EXITED ? ending.si_status : 128 + ending.si_status;
}

}  // namespace next_steps_proxy

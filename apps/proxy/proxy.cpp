#include "proxy/proxy.h"

#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>
#include <unistd.h>

#include "proxy/child_process.h"
#include "proxy/conversation.h"
#include "proxy/line_pump.h"

namespace next_steps_proxy {

namespace {

using Clock = std::chrono::steady_clock;

// How long the server has after the end of its input, and again after SIGTERM.
constexpr std::chrono::seconds kPatience{1};

// The threads send it to the process when one side has ended. Users do not send it.
int side_ended() noexcept {
  return SIGRTMIN;
}
void report_end() noexcept {
  ::kill(::getpid(), side_ended());
}

// Signals that wait until they are asked for, in all threads.
class Signals {
 public:
  Signals() {
    static_cast<void>(::signal(SIGPIPE, SIG_IGN));
    static_cast<void>(::signal(SIGCHLD, SIG_DFL));
    ::sigemptyset(&awaited_);
    for (const int each : {SIGINT, SIGTERM, SIGCHLD, side_ended()}) ::sigaddset(&awaited_, each);
    ::pthread_sigmask(SIG_BLOCK, &awaited_, &before_);
  }

  const sigset_t& before() const noexcept { return before_; }

  // Lets SIGINT and SIGTERM end the process from now on.
  static void unblock_ending() noexcept {
    sigset_t ending = {};
    ::sigemptyset(&ending);
    ::sigaddset(&ending, SIGINT);
    ::sigaddset(&ending, SIGTERM);
    ::pthread_sigmask(SIG_UNBLOCK, &ending, nullptr);
  }

  // Waits for the next signal. Returns -1 at the deadline, and sometimes earlier.
  int next(std::optional<Clock::time_point> deadline) const noexcept {
    if (!deadline) return ::sigwaitinfo(&awaited_, nullptr);
    const auto left = std::max<Clock::duration>(*deadline - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::floor<std::chrono::seconds>(left);
    const timespec time{seconds.count(), std::chrono::nanoseconds(left - seconds).count()};
    return ::sigtimedwait(&awaited_, nullptr, &time);
  }

 private:
  sigset_t awaited_ = {};
  sigset_t before_ = {};
};

// Waits until the server ends, and returns its status. Passes signals on. After the end of a side it sends
// signals of its own.
int wait_for_end(const ChildProcess& server, const Signals& signals) {
  std::optional<Clock::time_point> deadline;
  int next_signal = SIGTERM;
  std::optional<int> status;
  while (!(status = server.exit_status())) {
    const int signal = signals.next(deadline);
    if (signal == side_ended()) {
      if (!deadline && next_signal == SIGTERM) deadline = Clock::now() + kPatience;
    } else if (signal > 0 && signal != SIGCHLD) {
      server.send_signal(signal);
    } else if (deadline && Clock::now() >= *deadline) {
      server.send_signal(next_signal);
      deadline = next_signal == SIGTERM ? std::optional(*deadline + kPatience) : std::nullopt;
      next_signal = SIGKILL;
    }
  }
  // Processes that the server has left behind had their signal, too.
  if (next_signal == SIGKILL) server.send_signal(SIGKILL);
  return *status;
}

}  // namespace

int run_proxy(const std::vector<std::string>& command, const ProxyOptions& options) {
  // A pipe must not get the number of a standard stream.
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    if (::fcntl(stream, F_GETFD) < 0) ::open("/dev/null", O_RDWR);  // NOLINT(*-vararg, android-*)
  }
  const Signals signals;
  ChildProcess server(command, signals.before());
  Pipe ended;  // its sink is closed when the server has ended
  Conversation conversation(options);
  std::mutex mutex;  // for the conversation
  std::jthread to_server([&] {
    LinePump pump({STDIN_FILENO, server.input(), ended.source(), false},
                  [&](std::string_view line) -> std::optional<std::string> {
                    const std::lock_guard lock(mutex);
                    conversation.from_client(line);
                    return std::nullopt;
                  });
    pump.run([] {});
    server.close_input();
    report_end();
  });
  std::jthread to_client([&] {
    LinePump pump({server.output(), STDOUT_FILENO, ended.source(), true}, [&](std::string_view line) {
      const std::lock_guard lock(mutex);
      return conversation.from_server(line);
    });
    pump.run(report_end);
    report_end();
  });
  const int status = wait_for_end(server, signals);
  ended.close_sink();
  Signals::unblock_ending();  // the client may never read the rest
  return status;
}

}  // namespace next_steps_proxy

#include "proxy/proxy.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <string_view>
#include <unistd.h>

#include <sys/signalfd.h>

#include "proxy/child_process.h"
#include "proxy/conversation.h"
#include "proxy/line_pump.h"
#include "requests/failures.h"

namespace next_steps_proxy {

namespace {

using Clock = std::chrono::steady_clock;

// How long the server has after the end of its input, and again after SIGTERM.
constexpr std::chrono::seconds kPatience{1};

// The signals that are read from a descriptor instead of interrupting.
class Signals {
 public:
  Signals() {
    ::signal(SIGPIPE, SIG_IGN);
    ::signal(SIGCHLD, SIG_DFL);
    sigset_t awaited;
    ::sigemptyset(&awaited);
    for (const int each : {SIGINT, SIGTERM, SIGCHLD}) ::sigaddset(&awaited, each);
    ::sigprocmask(SIG_BLOCK, &awaited, &before_);
    descriptor_ = ::signalfd(-1, &awaited, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) throw requests::IoFailed("signals");
  }

  const sigset_t& before() const noexcept { return before_; }
  int descriptor() const noexcept { return descriptor_; }
  // The next signal that has arrived, or 0.
  int next() const noexcept {
    signalfd_siginfo arrived = {};
    return ::read(descriptor_, &arrived, sizeof(arrived)) > 0 ? static_cast<int>(arrived.ssi_signo) : 0;
  }

 private:
  sigset_t before_ = {};
  int descriptor_ = -1;
};

class Proxy {
 public:
  Proxy(const std::vector<std::string>& command, const ProxyOptions& options)
      : server_(command, signals_.before()),
        conversation_(options),
        to_server_(STDIN_FILENO, Sink(server_.input()),
                   [this](std::string_view line) {
                     conversation_.from_client(line);
                     return std::nullopt;
                   }),
        to_client_(server_.output(), Sink(STDOUT_FILENO),
                   [this](std::string_view line) { return conversation_.from_server(line); }) {}

  int run() {
    while (!status_ || !to_client_.is_done()) {
      wait();
      if (has(signals) != 0) follow_signals();
      serve_client();
      serve_server();
      if (Clock::now() >= deadline_) force();
    }
    if (next_signal_ == SIGKILL)
      server_.send_signal(SIGKILL);  // to processes that the server has left behind
    return *status_;
  }

 private:
  enum Stream : std::size_t { from_client, to_server, from_server, to_client, signals };
  static constexpr short kGone = POLLERR | POLLHUP | POLLNVAL;

  // What was waited for and is there.
  int has(Stream stream) const noexcept { return streams_[stream].revents; }
  int has_gone(Stream stream) const noexcept { return has(stream) & (kGone | POLLRDHUP); }

  static short output_of(const LinePump& pump) noexcept { return pump.has_output() ? POLLOUT : 0; }

  void wait() {
    const auto set = [this](Stream stream, int descriptor, bool is_wanted, int events) {
      streams_[stream] = {is_wanted ? descriptor : -1, static_cast<short>(events), 0};
    };
    const bool reads_client = to_server_.wants_input();
    set(from_client, STDIN_FILENO, reads_client || !is_ending_, reads_client ? POLLIN : POLLRDHUP);
    set(to_server, server_.input(), !to_server_.is_broken(), output_of(to_server_));
    set(from_server, server_.output(), to_client_.wants_input(), POLLIN);
    set(to_client, to_client_.sink(), !to_client_.is_broken(), output_of(to_client_));
    set(signals, signals_.descriptor(), true, POLLIN);
    while (::poll(streams_.data(), streams_.size(), timeout()) < 0) {
      if (errno != EINTR) throw requests::IoFailed("poll");
    }
  }

  // In milliseconds. What a server that has ended has left in its pipe is there at once.
  int timeout() const {
    if (status_ && to_client_.wants_input()) return 0;
    if (deadline_ == Clock::time_point::max()) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
  }

  void follow_signals() {
    for (int signal = signals_.next(); signal != 0; signal = signals_.next()) {
      if (signal != SIGCHLD) server_.send_signal(signal);
    }
    status_ = server_.exit_status();
  }

  void serve_client() {
    if (to_server_.wants_input() && has(from_client) != 0) to_server_.read();
    if ((has(to_client) & POLLOUT) != 0) to_client_.write();
    if (has_gone(to_client) != 0) to_client_.break_off();
    if (has_gone(from_client) != 0 || to_server_.has_ended() || to_client_.is_broken()) start_ending();
  }

  void serve_server() {
    if ((has(to_server) & POLLOUT) != 0) to_server_.write();
    if (has_gone(to_server) != 0) to_server_.break_off();
    if (to_server_.is_done()) server_.close_input();
    if (has(from_server) != 0) {
      to_client_.read();
    } else if (status_ && to_client_.wants_input()) {
      to_client_.end();
    }
    if (!to_client_.has_ended()) return;
    to_server_.break_off();
    server_.close_input();
    start_ending();
  }

  void start_ending() {
    if (!is_ending_) deadline_ = Clock::now() + kPatience;
    is_ending_ = true;
  }

  // Sends the next signal to a server that has not ended in time.
  void force() {
    server_.send_signal(next_signal_);
    deadline_ = next_signal_ == SIGTERM ? deadline_ + kPatience : Clock::time_point::max();
    next_signal_ = SIGKILL;
  }

  Signals signals_;
  ChildProcess server_;
  Conversation conversation_;
  LinePump to_server_;
  LinePump to_client_;
  std::array<pollfd, 5> streams_{};
  std::optional<int> status_;  // of the server that has ended
  bool is_ending_ = false;
  Clock::time_point deadline_ = Clock::time_point::max();  // when to send the next signal
  int next_signal_ = SIGTERM;
};

}  // namespace

int run_proxy(const std::vector<std::string>& command, const ProxyOptions& options) {
  // A pipe must not get the number of a standard stream.
  for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream) {
    if (::fcntl(stream, F_GETFD) < 0) ::open("/dev/null", O_RDWR);  // NOLINT(*-vararg, android-*)
  }
  return Proxy(command, options).run();
}

}  // namespace next_steps_proxy

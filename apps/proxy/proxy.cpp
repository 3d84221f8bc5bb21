#include "proxy/proxy.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <poll.h>
#include <string_view>
#include <unistd.h>

#include <sys/signalfd.h>

#include "proxy/child_process.h"
#include "proxy/conversation.h"
#include "proxy/line_pump.h"
#include "proxy/names.h"
#include "proxy/step_log.h"
#include "requests/failures.h"

namespace next_steps_proxy {

namespace {

using Clock = std::chrono::steady_clock;

// How long the server has after the end of its input, and again after SIGTERM; and how long a client that has
// left and reads nothing has after the end of the server.
constexpr std::chrono::seconds kPatience{1};

// How often the output of a server that has ended is read: more often than a full pipe needs, but not for as
// long as processes that it has left behind write.
constexpr int kMaxDrains = 32;

// Signals that are read from a descriptor instead of ending the process.
class Signals {
 public:
  Signals() {
    for (const int each : {SIGPIPE, SIGXFSZ}) static_cast<void>(::signal(each, SIG_IGN));
    static_cast<void>(::signal(SIGCHLD, SIG_DFL));
    sigset_t awaited = {};
    ::sigemptyset(&awaited);
    for (const int each : {SIGHUP, SIGINT, SIGQUIT, SIGTERM, SIGCHLD}) ::sigaddset(&awaited, each);
    ::pthread_sigmask(SIG_BLOCK, &awaited, &before_);
    descriptor_ = ::signalfd(-1, &awaited, SFD_CLOEXEC | SFD_NONBLOCK);
    if (descriptor_ < 0) throw requests::IoFailed("signals");
  }
  Signals(const Signals&) = delete;
  Signals& operator=(const Signals&) = delete;
  ~Signals() { ::close(descriptor_); }

  const sigset_t& before() const noexcept { return before_; }
  int descriptor() const noexcept { return descriptor_; }

  // The next signal, or 0.
  int next() const noexcept {
    signalfd_siginfo signal = {};
    const bool is_there = ::read(descriptor_, &signal, sizeof(signal)) == sizeof(signal);
    return is_there ? static_cast<int>(signal.ssi_signo) : 0;
  }

 private:
  int descriptor_ = -1;
  sigset_t before_ = {};
};

// One loop serves both directions, so that neither side stalls the other.
class Proxy {
 public:
  Proxy(const std::vector<std::string>& command, const ProxyOptions& options)
      : log_(options.log.empty() ? nullptr : std::make_unique<StepLog>(std::string(options.log))),
        server_(command, signals_.before()),
        conversation_(options, log_.get()),
        to_server_(STDIN_FILENO, server_.input(),
                   [this](std::string_view line) {
                     conversation_.from_client(line);
                     return std::nullopt;
                   }),
        to_client_(server_.output(), STDOUT_FILENO,
                   [this](std::string_view line) { return conversation_.from_server(line); }) {}

  // Returns the server's status.
  int run() {
    while (!status_ || !(is_deaf_ || to_client_.is_done())) step();
    // Processes that the server has left behind had their signal, too.
    if (next_signal_ == SIGKILL) server_.send_signal(SIGKILL);
    return *status_;
  }

 private:
  void step() {
    const auto watch = [](bool is_wanted, int stream, int events) {
      return pollfd{is_wanted ? stream : -1, static_cast<std::int16_t>(events), 0};
    };
    const bool drains = status_ && to_client_.wants_to_read();  // what a dead server has written is there
    const bool hears = to_server_.wants_to_read() ? !status_ : !has_left_;
    std::array<pollfd, 5> streams = {
        {watch(true, signals_.descriptor(), POLLIN),
         watch(hears, STDIN_FILENO, to_server_.wants_to_read() ? POLLIN : POLLRDHUP),
         watch(!status_ && to_server_.wants_to_write(), server_.input(), POLLOUT),
         watch(to_client_.wants_to_read(), server_.output(), POLLIN),
         watch(!is_deaf_, STDOUT_FILENO, to_client_.wants_to_write() ? POLLOUT : 0)}};
    const int ready = ::poll(streams.data(), streams.size(), drains ? 0 : milliseconds_left());
    if (ready < 0 && errno != EINTR) throw requests::IoFailed("poll");
    if (ready < 0) return;
    const auto& [signals, client_in, server_in, server_out, client_out] = streams;
    if (client_in.revents != 0) hear();
    if (server_in.revents != 0) write_to_server();
    if (server_out.revents != 0) read(to_client_);
    if (drains && (server_out.revents == 0 || ++drains_ == kMaxDrains)) to_client_.end();
    if (client_out.revents != 0) write_to_client();
    if (to_server_.is_done()) server_.close_input();
    if (to_client_.has_ended()) end_input();
    if (signals.revents != 0) take_signal();
    if (deadline_ && Clock::now() >= *deadline_ && (ready == 0 || !status_)) end_patience();
  }

  // Up to the deadline; -1 without one.
  int milliseconds_left() const {
    if (!deadline_) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline_ - Clock::now());
    return std::max(static_cast<int>(left.count()), 0);
  }

  void read(LinePump& pump) {
    if (!pump.read()) conversation_.forget_calls();  // one of them may be answered by the line
  }

  // Reads from the client, or notes its end while the server does not take what was read before.
  void hear() {
    if (to_server_.wants_to_read()) {
      read(to_server_);
      has_left_ = to_server_.has_ended();
    } else {
      has_left_ = true;
    }
    if (has_left_) start_clock();
  }

  void write_to_server() {
    if (!to_server_.write()) to_server_.drop();
    if (deadline_ && next_signal_ == SIGTERM) deadline_ = Clock::now() + kPatience;
  }

  void write_to_client() {
    if (to_client_.wants_to_write() && to_client_.write()) {
      if (status_) restart_clock();
      return;
    }
    is_deaf_ = true;
    to_client_.drop();
    end_input();
  }

  // Ends the server's input, as nobody gets answers any more.
  void end_input() {
    to_server_.drop();
    to_server_.end();
    server_.close_input();
    start_clock();
  }

  // Sets the deadline of the server, or after its end that of a client that has left.
  void start_clock() {
    if (deadline_) return;
    if (status_ ? has_left_ : next_signal_ == SIGTERM) deadline_ = Clock::now() + kPatience;
  }
  void restart_clock() {
    deadline_.reset();
    start_clock();
  }

  // Passes a signal on, or takes note of the server's end.
  void take_signal() {
    const int signal = signals_.next();
    if (signal != 0 && signal != SIGCHLD) {
      is_deaf_ |= status_.has_value();  // the user waits no longer for the client
      return server_.send_signal(signal);
    }
    if (!status_ && (status_ = server_.exit_status())) restart_clock();
  }

  void end_patience() {
    if (status_) {
      is_deaf_ = true;
      return;
    }
    server_.send_signal(next_signal_);
    deadline_ = next_signal_ == SIGTERM ? std::optional(Clock::now() + kPatience) : std::nullopt;
    next_signal_ = SIGKILL;
  }

  Signals signals_;
  std::unique_ptr<StepLog> log_;
  ChildProcess server_;
  Conversation conversation_;
  LinePump to_server_;
  LinePump to_client_;
  std::optional<int> status_;                  // of the server, when it has ended
  std::optional<Clock::time_point> deadline_;  // of the server, or after its end of the client
  int next_signal_ = SIGTERM;                  // to the server, at the deadline
  int drains_ = 0;                             // how often the output was read since then
  bool has_left_ = false;                      // whether the client sends no more
  bool is_deaf_ = false;                       // whether the client reads no more
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

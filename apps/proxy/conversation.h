// The messages between a client and a tool server.
//
// Which calls are in flight, and what becomes of the answers to them. An id belongs to the client's requests;
// a server's own requests have other ones. Threads: one at a time.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "proxy/step_log.h"
#include "proxy/tool_list.h"
#include "requests/request.h"

namespace next_steps_proxy {

class Conversation {
 public:
  // `log` takes note of calls and answers; it may be null, and must outlive this object.
  Conversation(const ProxyOptions& options, StepLog* log) : options_(options), tools_(options), log_(log) {}

  // Takes note of a line from the client. Throws JsonError and std::bad_alloc.
  void from_client(std::string_view line);

  // Returns what is to be passed on in place of a line from the server, or nothing if that is the line
  // itself. Throws JsonError and std::bad_alloc.
  std::optional<std::string> from_server(std::string_view line);

  // Lets the answers to all calls in flight pass.
  void forget_calls() noexcept { in_flight_.clear(); }

 private:
  // Returns the line that replaces the answer, or nothing.
  using OnAnswer = std::function<std::optional<std::string>(std::string_view line)>;

  void take_request(std::string_view message);
  void call(const std::string& id, std::string_view parameters);
  void list(const std::string& id, std::string_view parameters);
  OnAnswer take(std::string_view answer);

  ProxyOptions options_;
  ToolList tools_;
  StepLog* log_;
  std::map<std::string, OnAnswer> in_flight_;  // by the JSON text of the id
};

}  // namespace next_steps_proxy

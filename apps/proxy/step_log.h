// The log of the proxy: which steps its answers offer, and which of them the client follows.
//
// One JSON line for each finished answer, and one for each call that is a step on offer:
//   {"time", "tool", "action", "bytes_before", "bytes_after", "null_bytes", "space_bytes", "hint_bytes",
//    "steps": [{"row", "tool", "action", "args", "outcome"}]}
//   {"time", "followed": {"row", "tool", "action", "args", "outcome"}, "after"}
// The outcome is "kept", "not served", "repeat", "over the cap" or "no room". Only a kept step has arguments.
// `after` counts the calls since the answer.
//
// A line is appended by one write, so that several proxies may share a file. If that fails, a warning says
// so, and nothing more is logged. Threads: one at a time.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "proxy/names.h"
#include "requests/request.h"

namespace next_steps_proxy {

class StepLog {
 public:
  // Opens or creates the file. Throws IoFailed.
  explicit StepLog(const std::string& file);
  StepLog(const StepLog&) = delete;
  StepLog& operator=(const StepLog&) = delete;
  ~StepLog();

  // Takes note of a call of any tool: it may be a step of one of the last answers.
  void note_call(std::string_view tool, const values::JsonObject& arguments) noexcept;

  // Takes note of the answer that `request` asks for, and whose text has `bytes` so far.
  void note_answer(const requests::Request& request, std::size_t bytes) noexcept;

 private:
  struct Answer {
    std::size_t calls;        // how many were made before
    values::JsonList offers;  // its kept steps; null in place of one that was followed
  };

  values::JsonObject followed(std::string_view tool, const values::JsonObject& arguments);
  values::JsonObject finished(requests::Request request, std::size_t bytes);
  void append(const std::function<values::JsonObject()>& make_entry) noexcept;

  std::string file_;
  int descriptor_ = -1;  // -1 also after a failure
  std::size_t calls_ = 0;
  std::deque<Answer> answers_;  // the newest first
};

}  // namespace next_steps_proxy

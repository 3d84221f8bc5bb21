// The log of the proxy: which steps its answers offer, and which of them the client follows.
//
// One JSON line for each finished answer, and one for each call that is a step on offer:
//   {"time", "tool", "action", "bytes_before", "bytes_after", "null_bytes", "space_bytes", "hint_bytes",
//    "steps": [{"row", "tool", "action", "args", "outcome"}]}
//   {"time", "followed": {"row", "tool", "action", "args", "outcome"}, "after"}
// The outcome is "kept", "not served", "repeat", "over the cap" or "no room". Only a kept step has arguments,
// and a dropped step of the tool itself has only its row, "own", and its outcome. `after` counts the calls
// since the answer. Always bytes_before - null_bytes - space_bytes + hint_bytes is bytes_after.
//
// A line is appended by one write, so that several proxies may share a file. If that fails, a warning says
// so, and nothing more is logged. Threads: one at a time.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

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

  // Takes note of a call of any tool: it may be a step of one of the last finished answers.
  void note_call(std::string_view tool, const values::JsonObject& arguments) noexcept;

  // Takes note of the answer that `request` asks for, and whose text has `bytes` so far.
  void note_answer(const requests::Request& request, std::size_t bytes) noexcept;

 private:
  struct Offer {
    values::JsonObject step;                  // as it is logged; empty when it was followed
    std::map<std::string, std::string> args;  // canonical texts
  };
  struct Answer {
    std::size_t calls;  // how many were made before
    std::vector<Offer> offers;
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

// The log of the proxy: which steps its answers offer, and which of them the client follows.
//
// One JSON line for each finished answer, and one for each call that is a step on offer:
//   {"time", "tool", "action", "bytes_before", "bytes_after", "null_bytes", "space_bytes", "hint_bytes",
//    "steps": [{"row", "call", "args", "outcome"}]}
//   {"row", "call", "args", "time", "followed_after"}
// The outcome is "kept", "no room", "not served", "repeat" or "over the cap". Only a kept step has arguments.
// Each line is appended in one piece, so that several proxies may share a file. Threads: one at a time.
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
  explicit StepLog(std::string file);
  StepLog(const StepLog&) = delete;
  StepLog& operator=(const StepLog&) = delete;
  ~StepLog() { close(); }

  // Takes note of a call of any tool: it may be a step of one of the last kAnswers answers.
  void note_call(std::string_view tool, const values::JsonObject& arguments) noexcept;

  // Takes note of the answer that `request` asks for, and whose text has `bytes` so far.
  void note_answer(requests::Request request, std::size_t bytes) noexcept;

 private:
  static constexpr std::size_t kAnswers = 100;

  using Fields = std::map<std::string, std::string>;  // the canonical texts of arguments
  struct Offer {
    values::JsonObject entry;  // {"row", "call", "args"}
    std::string tool;
    Fields args;
  };
  struct Answer {
    std::size_t calls;  // how many calls were made before
    std::vector<Offer> offers;
  };

  static Fields fields_of(const values::JsonObject& arguments);
  values::JsonObject followed(std::string_view tool, const values::JsonObject& arguments);
  values::JsonObject finished(requests::Request request, std::size_t bytes);
  values::JsonObject entry_of(const module::CandidateStep& candidate);
  void append(const std::function<values::JsonObject()>& entry) noexcept;
  void end(const char* reason) noexcept;
  void close() noexcept;

  std::string file_;
  int descriptor_;
  std::size_t calls_ = 0;
  std::deque<Answer> answers_;  // the newest first
};

}  // namespace next_steps_proxy

#include "proxy/step_log.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>
#include <utility>

#include "requests/failures.h"
#include "vantrex/values/null_fields.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_proxy {

using values::JsonField;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

constexpr std::size_t kAnswers = 100;  // those whose steps are on offer

// In the order of module::Verdict.
constexpr std::array kOutcomes = {"kept", "not served", "repeat", "over the cap", "no room"};

// In UTC: "2026-11-24T08:15:00Z".
std::string now() {
  const std::time_t seconds = std::time(nullptr);
  std::tm utc = {};
  ::gmtime_r(&seconds, &utc);
  std::array<char, 32> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%FT%TZ", &utc)};
}

JsonObject entry_of(const module::CandidateStep& candidate) {
  JsonObject entry{{"row", candidate.from()}};
  if (const JsonObject* step = candidate.step.object()) {
    entry.append("tool", (*step)["tool"]);
    if (const JsonValue& action = (*step)["args"]["action"]; action.string()) entry.append("action", action);
    if (candidate.verdict == module::Verdict::kept) entry.append("args", (*step)["args"]);
  }
  entry.append("outcome", kOutcomes.at(static_cast<std::size_t>(candidate.verdict)));
  return entry;
}

// Whether a call with these arguments follows the step: it gives all that the step has.
bool follows(const JsonObject& arguments, const JsonValue& step) {
  const JsonObject* const wanted = step["args"].object();
  return wanted != nullptr && std::all_of(wanted->begin(), wanted->end(), [&](const JsonField& each) {
           const JsonValue& given = arguments[each.key];
           return values::compact_size(given) == values::compact_size(each.value) &&
                  values::canonical_text(given) == values::canonical_text(each.value);
         });
}

}  // namespace

StepLog::StepLog(const std::string& file) : file_(file) {
  // A pipe that nobody reads must not stop the proxy.
  constexpr int kFlags = O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK;
  descriptor_ = ::open(file.c_str(), kFlags, 0666);  // NOLINT(*-vararg)
  if (descriptor_ < 0) throw requests::IoFailed(file);
}

StepLog::~StepLog() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

void StepLog::note_call(std::string_view tool, const JsonObject& arguments) noexcept {
  append([&] { return followed(tool, arguments); });
}

void StepLog::note_answer(const requests::Request& request, std::size_t bytes) noexcept {
  append([&] { return finished(request, bytes); });
}

// Returns the entry of a call, empty if the call is no step on offer. The newest offer counts, once.
JsonObject StepLog::followed(std::string_view tool, const JsonObject& arguments) {
  ++calls_;
  for (Answer& answer : answers_) {
    for (std::size_t i = 0; i < answer.offers.size(); ++i) {
      JsonValue& step = *answer.offers.item(i);
      if (std::as_const(step)["tool"] != tool || !follows(arguments, step)) continue;
      return {{"time", now()}, {"followed", std::exchange(step, nullptr)}, {"after", calls_ - answer.calls}};
    }
  }
  return {};
}

JsonObject StepLog::finished(requests::Request request, std::size_t bytes) {
  JsonObject entry{{"time", now()}, {"tool", request.tool}};
  if (request.action) entry.append("action", *request.action);
  const std::size_t compact = values::compact_size(request.response);
  values::drop_null_fields(request.response);
  const std::size_t without_nulls = values::compact_size(request.response);
  const module::Explanation explained = explanation_of(std::move(request));
  JsonList steps;
  JsonList offers;
  for (const module::CandidateStep& each : explained.candidates) {
    steps.push_back(entry_of(each));
    if (each.verdict == module::Verdict::kept) offers.push_back(std::as_const(steps)[steps.size() - 1]);
  }
  answers_.push_front({calls_, std::move(offers)});
  if (answers_.size() > kAnswers) answers_.pop_back();
  entry.append("bytes_before", bytes);
  entry.append("bytes_after", explained.bytes + explained.step_bytes);
  entry.append("null_bytes", compact - without_nulls);
  entry.append("space_bytes", static_cast<std::int64_t>(bytes) - static_cast<std::int64_t>(compact));
  entry.append("hint_bytes", explained.step_bytes);
  entry.append("steps", std::move(steps));
  return entry;
}

// Writes the entry, unless it is empty or the log has ended.
void StepLog::append(const std::function<JsonObject()>& make_entry) noexcept {
  if (descriptor_ < 0) return;
  try {
    const JsonObject entry = make_entry();
    if (entry.empty()) return;
    const std::string line = values::compact_text(entry) + '\n';
    for (std::size_t written = 0; written < line.size();) {
      const ssize_t count = ::write(descriptor_, line.data() + written, line.size() - written);
      if (count < 0) throw requests::IoFailed(file_);
      written += static_cast<std::size_t>(count);
    }
  } catch (const std::exception& error) {
    std::cerr << "next-steps: " << error.what() << ": the log ends here\n";
    ::close(std::exchange(descriptor_, -1));
  }
}

}  // namespace next_steps_proxy

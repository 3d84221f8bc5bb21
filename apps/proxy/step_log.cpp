#include "proxy/step_log.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <optional>
#include <unistd.h>
#include <utility>

#include "requests/failures.h"
#include "vantrex/values/null_fields.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_proxy {

using module::CandidateStep;
using module::Verdict;
using values::compact_size;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// The time, in UTC: "2026-11-24T08:15:00Z".
std::string now() {
  const std::time_t seconds = std::time(nullptr);
  std::tm utc = {};
  ::gmtime_r(&seconds, &utc);
  std::array<char, 32> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%FT%TZ", &utc)};
}

std::string outcome(Verdict verdict) {
  switch (verdict) {
    case Verdict::kept:
      return "kept";
    case Verdict::not_served:
      return "not served";
    case Verdict::repeat:
      return "repeat";
    case Verdict::over_cap:
      return "over the cap";
    case Verdict::over_room:
      break;
  }
  return "no room";
}

}  // namespace

StepLog::StepLog(std::string file)
    : file_(std::move(file)),
      // A pipe that nobody reads must not stop the proxy.
      descriptor_(::open(file_.c_str(),
                         O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK,  // NOLINT(*-vararg)
                         0666)) {
  if (descriptor_ < 0) throw requests::IoFailed(file_);
}

void StepLog::note_call(std::string_view tool, const JsonObject& arguments) noexcept {
  ++calls_;
  append([&] { return followed(tool, arguments); });
}

void StepLog::note_answer(requests::Request request, std::size_t bytes) noexcept {
  append([&] { return finished(std::move(request), bytes); });
}

StepLog::Fields StepLog::fields_of(const JsonObject& arguments) {
  Fields fields;
  for (const values::JsonField& each : arguments) {
    fields.emplace(each.key.view(), values::canonical_text(each.value));
  }
  return fields;
}

// The entry of a call, empty unless the call is a step on offer. The newest offer counts, once.
JsonObject StepLog::followed(std::string_view tool, const JsonObject& arguments) {
  const Fields given = fields_of(arguments);
  const auto is_made = [&](const Offer& offer) {
    return offer.tool == tool &&
           std::includes(given.begin(), given.end(), offer.args.begin(), offer.args.end());
  };
  for (Answer& answer : answers_) {
    const auto found = std::find_if(answer.offers.begin(), answer.offers.end(), is_made);
    if (found == answer.offers.end()) continue;
    JsonObject entry = std::move(found->entry);
    entry.append("time", now());
    entry.append("followed_after", calls_ - answer.calls);
    answer.offers.erase(found);
    return entry;
  }
  return {};
}

JsonObject StepLog::finished(requests::Request request, std::size_t bytes) {
  JsonObject entry{{"time", now()}, {"tool", request.tool}};
  if (request.action) entry.append("action", *request.action);
  const std::size_t compact = compact_size(request.response);
  values::drop_null_fields(request.response);
  const std::size_t without_nulls = compact_size(request.response);
  const module::Explanation explained = explanation_of(std::move(request));
  answers_.push_front({calls_, {}});
  if (answers_.size() > kAnswers) answers_.pop_back();
  JsonList steps;
  for (const CandidateStep& each : explained.candidates) steps.push_back(entry_of(each));
  entry.append("bytes_before", bytes);
  entry.append("bytes_after", explained.bytes + explained.step_bytes);
  entry.append("null_bytes", compact - without_nulls);
  entry.append("space_bytes", static_cast<std::int64_t>(bytes) - static_cast<std::int64_t>(compact));
  entry.append("hint_bytes", explained.step_bytes);
  entry.append("steps", std::move(steps));
  return entry;
}

// The entry of a step, which is on offer from now on if it was kept.
JsonObject StepLog::entry_of(const CandidateStep& candidate) {
  const JsonObject* const step = candidate.step.object();
  const std::string tool(step == nullptr ? "" : (*step)["tool"].string().value_or(""));
  const JsonObject* const args = step == nullptr ? nullptr : (*step)["args"].object();
  std::string call = tool;
  if (args != nullptr && (*args)["action"].string()) call.append(":").append(*(*args)["action"].string());
  JsonObject entry{{"row", candidate.from()}, {"call", std::move(call)}};
  if (candidate.verdict == Verdict::kept && args != nullptr) {
    entry.append("args", *args);
    answers_.front().offers.push_back({entry, tool, fields_of(*args)});
  }
  entry.append("outcome", outcome(candidate.verdict));
  return entry;
}

// Writes the entry, unless it is empty or the log has ended.
void StepLog::append(const std::function<JsonObject()>& entry) noexcept {
  if (descriptor_ < 0) return;
  try {
    const JsonObject fields = entry();
    if (fields.empty()) return;
    const std::string line = values::compact_text(fields) + '\n';
    const ssize_t count = ::write(descriptor_, line.data(), line.size());
    if (count < 0) return end(std::strerror(errno));  // NOLINT(concurrency-mt-unsafe)
    if (static_cast<std::size_t>(count) < line.size()) end("only a part of a line was written");
  } catch (const std::exception& error) {
    end(error.what());
  }
}

void StepLog::end(const char* reason) noexcept {
  std::cerr << "next-steps: " << file_ << ": " << reason << "; nothing more is logged\n";
  close();
}

void StepLog::close() noexcept {
  if (descriptor_ >= 0) ::close(descriptor_);
  descriptor_ = -1;
}

}  // namespace next_steps_proxy

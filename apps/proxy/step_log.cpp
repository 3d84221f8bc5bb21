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

std::int64_t difference(std::size_t a, std::size_t b) {
  return static_cast<std::int64_t>(a) - static_cast<std::int64_t>(b);
}

// The entry of a step; of a dropped step of the tool itself without the call, which nobody has seen.
JsonObject entry_of(const module::CandidateStep& candidate) {
  const bool is_kept = candidate.verdict == module::Verdict::kept;
  JsonObject entry{{"row", candidate.from()}};
  if (is_kept || candidate.source != module::Source::own) {
    const JsonValue& tool = candidate.step["tool"];
    const JsonValue& args = candidate.step["args"];
    if (tool.string()) entry.append("tool", tool);
    if (args["action"].string()) entry.append("action", args["action"]);
    if (is_kept && args.object() != nullptr) entry.append("args", args);
  }
  entry.append("outcome", kOutcomes.at(static_cast<std::size_t>(candidate.verdict)));
  return entry;
}

std::map<std::string, std::string> canonical_texts(const JsonObject& arguments) {
  std::map<std::string, std::string> texts;
  for (const JsonField& each : arguments) texts.emplace(each.key.view(), values::canonical_text(each.value));
  return texts;
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
  const auto given = canonical_texts(arguments);
  const auto is_followed = [&](const Offer& offer) {
    return offer.step["tool"] == tool &&
           std::includes(given.begin(), given.end(), offer.args.begin(), offer.args.end());
  };
  for (Answer& answer : answers_) {
    const auto found = std::find_if(answer.offers.begin(), answer.offers.end(), is_followed);
    if (found == answer.offers.end()) continue;
    JsonObject step = std::exchange(found->step, {});
    return {{"time", now()}, {"followed", std::move(step)}, {"after", calls_ - answer.calls}};
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
  Answer answer{calls_, {}};
  for (const module::CandidateStep& each : explained.candidates) {
    JsonObject step = entry_of(each);
    if (const JsonObject* args = step["args"].object())
      answer.offers.push_back({step, canonical_texts(*args)});
    steps.push_back(std::move(step));
  }
  answers_.push_front(std::move(answer));
  if (answers_.size() > kAnswers) answers_.pop_back();
  const bool saves_comma = explained.bytes == 2 && explained.step_bytes > 0;  // the answer is {}
  const std::size_t finished = explained.bytes + explained.step_bytes - (saves_comma ? 1 : 0);
  entry.append("bytes_before", bytes);
  entry.append("bytes_after", finished);
  entry.append("null_bytes", compact - without_nulls);
  entry.append("space_bytes", difference(bytes, compact));
  entry.append("hint_bytes", difference(finished, without_nulls));
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

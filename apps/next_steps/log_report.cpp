#include "next_steps/log_report.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <vector>

#include "vantrex/logging/quoted_literal.h"

namespace next_steps_program {

using requests::Members;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

// The number `key` of a line, which is small enough that no sum overflows.
std::int64_t number_in(Members& line, std::string_view key) {
  constexpr std::int64_t kMax = std::int64_t{1} << 40;
  const auto number = line.required(key, Kind::integer).integer<std::int64_t>();
  if (!number || *number < -kMax || *number > kMax) line.reject(key, "is out of range");
  return *number;
}

std::string text_in(const JsonValue& object, std::string_view key) {
  return std::string(object[key].string().value_or(""));
}

bool is_kept(const JsonValue& step) {
  return step["outcome"] == "kept";
}

// The lower median of numbers that are given with how often each occurs; null if there are none.
JsonValue median(const std::map<std::int64_t, std::int64_t>& numbers, std::int64_t count) {
  std::int64_t seen = 0;
  for (const auto& [number, times] : numbers) {
    seen += times;
    if (2 * seen >= count) return number;
  }
  return nullptr;
}

}  // namespace

void LogReport::add(std::string_view line) {
  Members members(line, "a line of a log");
  if (!members.has("followed_after")) return add_answer(members);
  const auto text = [&](std::string_view key) {
    return std::string(members.required(key, Kind::string).string().value_or(""));
  };
  const std::int64_t calls = number_in(members, "followed_after");
  Totals& totals = totals_of({text("row"), text("call")});
  ++totals.followed;
  ++totals.followed_after[std::clamp<std::int64_t>(calls, 1, kMaxCalls)];
}

void LogReport::add_answer(Members& line) {
  std::array<std::int64_t, kBytes.size()> bytes{};
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = number_in(line, kBytes[i]);
  const JsonList& steps = *line.required("steps", Kind::list).list();
  for (const JsonValue& step : steps) {
    for (const char* key : {"row", "call", "outcome"}) {
      if (!step[key].string()) line.reject("steps", "must be a list of steps with row, call and outcome");
    }
  }
  ++answers_;
  without_steps_ += std::none_of(steps.begin(), steps.end(), is_kept);
  for (std::size_t i = 0; i < bytes.size(); ++i) bytes_[i] += bytes[i];
  for (const JsonValue& step : steps) {
    Totals& totals = totals_of({text_in(step, "row"), text_in(step, "call")});
    ++totals.offered;
    totals.kept += is_kept(step);
  }
}

LogReport::Totals& LogReport::totals_of(Key key) {
  if (rows_.size() >= kMaxRows && !rows_.contains(key)) key = {"others", ""};
  return rows_[std::move(key)];
}

JsonObject LogReport::to_dict() const {
  JsonObject report{{"answers", answers_}, {"without_steps", without_steps_}};
  for (std::size_t i = 0; i < bytes_.size(); ++i) report.append(kBytes[i], bytes_[i]);
  JsonList rows;
  for (const auto& [key, totals] : rows_) {
    rows.push_back(JsonObject{{"row", key.first},
                              {"call", key.second},
                              {"offered", totals.offered},
                              {"kept", totals.kept},
                              {"followed", totals.followed},
                              {"calls_median", median(totals.followed_after, totals.followed)},
                              {"never_followed", totals.offered >= kEnough && totals.followed == 0}});
  }
  report.append("rows", std::move(rows));
  return report;
}

std::string LogReport::text() const {
  const JsonObject report = to_dict();
  const auto [before, after, nulls, space, hints] = bytes_;
  std::ostringstream text;
  text << "answers  " << answers_ << ", of which " << without_steps_ << " have no step\n"
       << "bytes    " << before << " before, " << after << " after: nulls " << -nulls << ", white space "
       << -space << ", hints +" << hints << "\n\n offered    kept followed   after  row > call\n";
  for (const JsonValue& row : *report["rows"].list()) {
    for (const char* key : {"offered", "kept", "followed", "calls_median"}) {
      const auto count = row[key].integer<std::int64_t>();
      text << std::setw(8) << (count ? std::to_string(*count) : "-") << ' ';
    }
    text << ' ' << vantrex::logging::printable(text_in(row, "row") + " > " + text_in(row, "call"))
         << (row["never_followed"] == true ? "  (never followed)" : "") << '\n';
  }
  return text.str();
}

}  // namespace next_steps_program

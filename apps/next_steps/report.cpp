// next-steps report: tells from logs of the proxy which steps are followed.
#include <array>
#include <cstdint>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/names.h"
#include "requests/input.h"
#include "requests/members.h"
#include "requests/output.h"
#include "vantrex/logging/quoted_literal.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_program {

using requests::Members;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

constexpr std::array<std::string_view, 8> kLogKeys = {
    "bytes_before", "bytes_after", "null_bytes", "space_bytes", "hint_bytes", "steps", "followed", "after"};
constexpr auto kByteKeys = std::span(kLogKeys).first<5>();
constexpr std::int64_t kEnough = 100;  // kept steps, to say that none is ever followed

// A row of the catalogue, and a call that it offers; "" for the dropped steps of the tools themselves.
using Row = std::pair<std::string, std::string>;

struct Counts {
  std::int64_t offered = 0;
  std::int64_t kept = 0;
  std::int64_t followed = 0;
  std::map<std::int64_t, std::int64_t> after = {};  // how often after so many calls

  bool is_never_followed() const { return kept >= kEnough && followed == 0; }

  // The lower median; nothing if it was never followed.
  std::optional<std::int64_t> median() const {
    std::int64_t seen = 0;
    for (const auto& [calls, times] : after) {
      seen += times;
      if (2 * seen >= followed) return calls;
    }
    return std::nullopt;
  }
};

// The number `key` of a line, at most that of the bytes of a text. So a sum of up to 2^31 does not overflow.
std::int64_t number_in(Members& line, std::string_view key) {
  constexpr std::int64_t kMax = std::int64_t{1} << 32;
  const auto number = line.required(key, Kind::integer).integer<std::int64_t>();
  if (!number || *number < -kMax || *number > kMax) line.reject(key, "is out of range");
  return *number;
}

std::string text_in(const JsonValue& object, std::string_view key) {
  return std::string(object[key].string().value_or(""));
}

Row row_of(const JsonValue& step) {
  const std::string action = text_in(step, "action");
  return {text_in(step, "row"), text_in(step, "tool") + (action.empty() ? "" : ":") + action};
}

class Report {
 public:
  // Adds a line. Throws JsonError if it is none of a log, and std::bad_alloc.
  void add(std::string_view text) {
    Members line(text, "a line of a log", kLogKeys);
    if (!line.has("followed")) return add_answer(line);
    const Row row = row_of(line.required("followed", Kind::object));
    const std::int64_t after = number_in(line, "after");
    Counts& counts = rows_[row];
    ++counts.followed;
    ++counts.after[after];
  }

  // {"answers", "without_steps", "bytes_before", "bytes_after", "null_bytes", "space_bytes", "hint_bytes",
  //  "rows": [{"row", "call", "offered", "kept", "followed", "after", "never_followed"}]}
  JsonObject to_dict() const {
    JsonObject report{{"answers", answers_}, {"without_steps", without_steps_}};
    for (std::size_t i = 0; i < bytes_.size(); ++i) report.append(kByteKeys[i], bytes_[i]);
    JsonList rows;
    for (const auto& [row, counts] : rows_) {
      const auto median = counts.median();
      rows.push_back(JsonObject{{"row", row.first},
                                {"call", row.second},
                                {"offered", counts.offered},
                                {"kept", counts.kept},
                                {"followed", counts.followed},
                                {"after", median ? JsonValue(*median) : JsonValue()},
                                {"never_followed", counts.is_never_followed()}});
    }
    report.append("rows", std::move(rows));
    return report;
  }

  std::string table() const {
    const auto [before, after, nulls, space, hints] = bytes_;
    std::ostringstream text;
    text << answers_ << " answers, " << without_steps_ << " of them without a step\n"
         << before << " bytes before, " << after << " after: nulls " << -nulls << ", white space " << -space
         << ", hints " << std::showpos << hints << std::noshowpos
         << "\n\n offered    kept followed   after  row > call\n";
    for (const auto& [row, counts] : rows_) {
      const auto& [name, call] = row;
      for (const std::int64_t number : {counts.offered, counts.kept, counts.followed})
        text << std::setw(8) << number << ' ';
      const auto median = counts.median();
      text << std::setw(8) << (median ? std::to_string(*median) : "-") << "  "
           << vantrex::logging::printable(name);
      if (!call.empty()) text << " > " << vantrex::logging::printable(call);
      text << (counts.is_never_followed() ? "  (never followed)" : "") << '\n';
    }
    return text.str();
  }

 private:
  void add_answer(Members& line) {
    std::array<std::int64_t, kByteKeys.size()> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = number_in(line, kByteKeys[i]);
    const JsonList& steps = *line.required("steps", Kind::list).list();
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes_[i] += bytes[i];
    ++answers_;
    bool has_steps = false;
    for (const JsonValue& step : steps) {
      Counts& counts = rows_[row_of(step)];
      const bool is_kept = step["outcome"] == "kept";
      has_steps |= is_kept;
      ++counts.offered;
      if (is_kept) ++counts.kept;
    }
    if (!has_steps) ++without_steps_;
  }

  std::int64_t answers_ = 0;
  std::int64_t without_steps_ = 0;
  std::array<std::int64_t, kByteKeys.size()> bytes_ = {};
  std::map<Row, Counts> rows_;
};

struct ReportOptions {
  std::vector<std::string> files;
  bool json = false;
};

// Adds the lines of a file, and names those that are wrong. Half a line at the end may be in the making.
// Returns whether all are right.
bool add_lines(Report& report, const std::string& file) {
  requests::Input input(file);
  requests::LineReader lines(input, [] {});
  bool all_right = true;
  while (const auto line = lines.next()) {
    try {
      report.add(*line);
    } catch (const requests::JsonError& error) {
      if (!lines.is_terminated()) break;
      all_right = false;
      std::cerr << in_source(input.name(), error, lines.line_number()).what() << '\n';
    }
  }
  return all_right;
}

ExitStatus report(const ReportOptions& options) {
  Report report;
  bool all_right = true;
  for (const std::string& file : options.files) all_right &= add_lines(report, file);
  requests::print(options.json ? values::compact_text(report.to_dict()) + "\n" : report.table());
  return all_right ? ExitStatus::done : ExitStatus::input_rejected;
}

}  // namespace

Command add_report(CLI::App& program) {
  auto options = std::make_shared<ReportOptions>();
  CLI::App* parser = program.add_subcommand("report", "Tell from logs of proxy which steps are followed");
  parser->add_option("LOG", options->files, "The logs; - is standard input")->required()->type_name("");
  parser->add_flag("--json", options->json, "Print the report as an object");
  parser->footer(
      "A row's call is offered if an answer has its arguments, and kept if the answer has room for it.\n"
      "\"after\" counts the calls from the answer to the one that follows the step; it is the median.");
  return {parser, [options] { return report(*options); }};
}

}  // namespace next_steps_program

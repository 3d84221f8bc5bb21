// next-steps explain: prints why an answer gets its steps.
#include "next_steps/explain.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/options.h"
#include "next_steps/print_answer.h"
#include "requests/output.h"
#include "vantrex/logging/quoted_literal.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_program {

using values::JsonValue;

namespace {

constexpr std::size_t kMaxFields = 10;
constexpr std::string_view kYellow = "\x1b[33m";

std::string right_aligned(std::size_t number) {
  const std::string digits = std::to_string(number);
  return std::string(10 - std::min<std::size_t>(digits.size(), 10), ' ') + digits;
}

// Returns `symbol {"action":"detail","fqn":"f"}` for a step, or the JSON of an entry that is
// no step.
std::string call_text(const JsonValue& step) {
  const auto tool = step["tool"].string();
  if (!tool) return compact_text(step);
  const JsonValue& args = step["args"];
  return std::string(*tool) + (args.is_null() ? "" : " " + compact_text(args));
}

// "usual symbol:callers, signal symbol:callers".
std::string rows_text(const module::TableRows& rows) {
  std::string text;
  if (!rows.usual.empty()) text = "usual " + rows.usual;
  if (rows.usual_of_tool) text += " (the row of the tool; the action has no row)";
  if (!rows.signal.empty()) text += (text.empty() ? "signal " : ", signal ") + rows.signal;
  return text.empty() ? "none" : text;
}

class ExplanationWriter {
 public:
  ExplanationWriter(const module::Explanation& explained, bool coloured)
      : explained_(explained), coloured_(coloured) {}

  std::string write() && {
    answer();
    for (std::size_t position = 0; position < explained_.candidates.size(); ++position) {
      candidate(position + 1, explained_.candidates[position]);
    }
    for (const module::AbsentHint& each : explained_.absent) absent(each);
    for (const module::SilentSignal& each : explained_.silent) silent(each);
    if (explained_.candidates.empty() && explained_.absent.empty() && explained_.silent.empty()) {
      line("no candidate steps");
    }
    for (const std::string& each : explained_.remarks) marked_line("! ", "remark", kYellow, each);
    return std::move(text_);
  }

 private:
  void line(const std::string& text) { text_ += vantrex::logging::printable(text) + '\n'; }
  void detail(const std::string& text) { line(std::string(11, ' ') + text); }

  // Appends a line: `number`, `verdict` in `colour` if colours are wanted, and `rest`.
  void marked_line(const std::string& number, const std::string& verdict, std::string_view colour,
                   const std::string& rest) {
    text_ += number;
    if (coloured_) text_ += colour;
    text_ += verdict;
    if (coloured_) text_ += "\x1b[0m";
    line(std::string(9 - verdict.size(), ' ') + rest);
  }

  void answer() {
    line("answer " + std::to_string(explained_.bytes) + " bytes, of which " +
         std::to_string(explained_.hint_bytes) + " are hints");
    const auto& fields = explained_.hint_fields;
    const std::size_t shown = std::min(fields.size(), kMaxFields);
    std::size_t rest = explained_.hint_bytes;
    for (std::size_t place = 0; place < shown; ++place) {
      line(right_aligned(fields[place].bytes) + "  " + fields[place].path);
      rest -= fields[place].bytes;
    }
    if (const std::size_t more = fields.size() - shown + explained_.more_hint_fields; more > 0) {
      line(right_aligned(rest) + "  in " + std::to_string(more) + " more");
    }
    line("steps  " + std::to_string(explained_.step_bytes) + " bytes");
    line("room   " + explained_.room_text() + " for hints and steps");
    line("rows   " + rows_text(explained_.rows));
  }

  void candidate(std::size_t number, const module::CandidateStep& each) {
    const bool kept = each.verdict == module::Verdict::kept;
    marked_line(std::to_string(number) + " ", kept ? "kept" : "dropped", kept ? "\x1b[32m" : "\x1b[31m",
                call_text(each.step));
    if (const auto reason = each.step["reason"].string()) detail(std::string(*reason));
    detail(each.from() + ", " + std::to_string(each.bytes) + " bytes: " + each.why());
  }

  void absent(const module::AbsentHint& each) {
    const JsonValue& takes = each.hint["takes"];
    const std::string arguments = takes.is_null() ? "" : " takes " + compact_text(takes);
    marked_line("- ", "absent", kYellow, call_text(each.hint) + arguments);
    detail(std::string(each.hint["reason"].string().value_or("")));
    detail(each.why);
  }

  void silent(const module::SilentSignal& each) {
    marked_line("- ", "silent", kYellow, "signal " + each.row + ": " + each.why);
  }

  const module::Explanation& explained_;
  bool coloured_;
  std::string text_;
};

struct ExplainOptions {
  AnswerOptions answer;
  bool json = false;
  bool pretty = false;
};

bool wants_colour() {
  const char* no_colour = std::getenv("NO_COLOR");  // NOLINT(concurrency-mt-unsafe): nobody sets it
  const char* terminal = std::getenv("TERM");       // NOLINT(concurrency-mt-unsafe)
  const bool refused = no_colour != nullptr && *no_colour != '\0';
  const bool is_dumb = terminal != nullptr && std::string_view(terminal) == "dumb";
  return !refused && !is_dumb && ::isatty(STDOUT_FILENO) == 1;
}

ExitStatus explain(ExplainOptions& options) {
  const module::Explanation explained = explanation_of(options.answer.read());
  if (options.json || options.pretty) {
    print_answer(explained.to_dict(), options.pretty);
  } else {
    requests::print(explanation_text(explained, wants_colour()));
  }
  return ExitStatus::done;
}

}  // namespace

std::string explanation_text(const module::Explanation& explained, bool coloured) {
  return ExplanationWriter(explained, coloured).write();
}

Command add_explain(CLI::App& program) {
  auto options = std::make_shared<ExplainOptions>();
  CLI::App* parser = program.add_subcommand("explain", "Say why an answer gets the steps it gets");
  options->answer.add_to(*parser);
  parser->add_flag("--json", options->json, "Print the explanation as an object");
  parser->add_flag("--pretty", options->pretty, "Print the explanation as an indented object");
  parser->footer(
      "Verdicts are coloured on a terminal, unless NO_COLOR is set and not empty, or TERM is dumb.");
  return {parser, [options] { return explain(*options); }};
}

}  // namespace next_steps_program

// next-steps report: tells from logs of the proxy which steps are followed.
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/log_report.h"
#include "next_steps/print_answer.h"
#include "next_steps/usage.h"
#include "requests/input.h"
#include "requests/output.h"

namespace next_steps_program {

namespace {

struct ReportOptions {
  std::vector<std::string> files;
  bool json = false;
};

// Adds the lines of a file. Names those that are wrong, except for half a line at the end: a proxy may be
// writing it. Returns how many are wrong.
std::size_t add_lines(LogReport& report, const std::string& file) {
  requests::Input input(file);
  requests::LineReader lines(input, [] {});
  std::size_t wrong = 0;
  while (const auto line = lines.next()) {
    try {
      report.add(*line);
    } catch (const requests::JsonError& error) {
      if (!lines.is_terminated()) continue;
      ++wrong;
      std::cerr << in_source(input.name(), error, lines.line_number()).what() << '\n';
    }
  }
  return wrong;
}

ExitStatus report(const ReportOptions& options) {
  LogReport report;
  std::size_t wrong = 0;
  for (const std::string& file : options.files) wrong += add_lines(report, file);
  if (options.json) {
    print_answer(report.to_dict(), false);
  } else {
    requests::Output output;
    output.write(report.text());
    output.flush();
  }
  return wrong == 0 ? ExitStatus::done : ExitStatus::input_rejected;
}

}  // namespace

Command add_report(CLI::App& program) {
  auto options = std::make_shared<ReportOptions>();
  CLI::App* parser = program.add_subcommand("report", "Tell from logs of proxy which steps are followed");
  parser->add_option("LOG", options->files, "The logs; - is standard input")
      ->required()
      ->check(refuse_empty)
      ->type_name("");
  parser->add_flag("--json", options->json, "Print the report as an object");
  parser->footer(
      "A row is offered when its call was a candidate step, and kept when the answer had room for it.\n"
      "\"after\" is the median number of calls up to the one that follows the step.");
  return {parser, [options] { return report(*options); }};
}

}  // namespace next_steps_program

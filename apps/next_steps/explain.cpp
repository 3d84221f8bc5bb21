// next-steps explain: prints why an answer gets its steps.
#include <cstdlib>
#include <memory>
#include <string_view>
#include <unistd.h>

#include <CLI/CLI.hpp>

#include "next_steps/answer_options.h"
#include "next_steps/command.h"
#include "next_steps/explanation_text.h"
#include "next_steps/print_answer.h"
#include "requests/output.h"

namespace next_steps_program {

namespace {

struct ExplainOptions {
  AnswerOptions answer;
  bool json = false;
  bool pretty = false;
};

Colour wanted_colour() {
  const char* no_colour = std::getenv("NO_COLOR");  // NOLINT(concurrency-mt-unsafe): nobody sets it
  const char* terminal = std::getenv("TERM");       // NOLINT(concurrency-mt-unsafe)
  const bool refused = no_colour != nullptr && *no_colour != '\0';
  const bool is_dumb = terminal != nullptr && std::string_view(terminal) == "dumb";
  return !refused && !is_dumb && ::isatty(STDOUT_FILENO) == 1 ? Colour::verdicts : Colour::none;
}

ExitStatus explain(ExplainOptions& options) {
  const module::Explanation explained = explanation_of(options.answer.read());
  if (options.json || options.pretty) {
    print_answer(explained.to_dict(), options.pretty);
    return ExitStatus::done;
  }
  requests::print(explanation_text(explained, wanted_colour()));
  return ExitStatus::done;
}

}  // namespace

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

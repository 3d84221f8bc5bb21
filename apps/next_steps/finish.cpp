// next-steps finish: finishes one answer.
#include <memory>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/options.h"
#include "next_steps/print_answer.h"

namespace next_steps_program {

namespace {

struct FinishOptions {
  AnswerOptions answer;
  bool pretty = false;
};

ExitStatus finish(FinishOptions& options) {
  print_answer(answer_to(options.answer.read()), options.pretty);
  return ExitStatus::done;
}

}  // namespace

Command add_finish(CLI::App& program) {
  auto options = std::make_shared<FinishOptions>();
  CLI::App* parser = program.add_subcommand("finish", "Finish one answer");
  options->answer.add_to(*parser);
  parser->add_flag("--pretty", options->pretty, "Indent the finished answer");
  parser->footer("Likely mistakes, such as a misspelt tool, are not reported: see next-steps explain.");
  return {parser, [options] { return finish(*options); }};
}

}  // namespace next_steps_program

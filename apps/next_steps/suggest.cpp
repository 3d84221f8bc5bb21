// next-steps suggest: answers a miss from an index.
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/options.h"
#include "next_steps/print_answer.h"
#include "next_steps/usage.h"
#include "requests/failures.h"
#include "requests/index_reader.h"
#include "vantrex/logging/quoted_literal.h"

namespace next_steps_program {

namespace {

struct SuggestOptions {
  std::string what;
  std::string name;
  std::string index;
  RequestOptions request;
  std::optional<std::string> file;
  bool pretty = false;
};

ExitStatus suggest(SuggestOptions& options) {
  requests::Request request = options.request.read();
  request.miss = {*requests::wanted_named(options.what), options.name};
  requests::Input input(options.index);
  announce(input, "an index");
  const models::InMemoryRepository index = requests::read_index(input);
  if (options.file) request.response = read_answer(*options.file);
  try {
    print_answer(answer_to(std::move(request), &index), options.pretty);
  } catch (const requests::NoMiss& error) {
    throw requests::InputRejected(vantrex::logging::printable(options.name), error.what());
  }
  return ExitStatus::done;
}

}  // namespace

Command add_suggest(CLI::App& program) {
  auto options = std::make_shared<SuggestOptions>();
  CLI::App* parser =
      program.add_subcommand("suggest", "Answer a call for a symbol or a path that the index does not hold");
  parser->add_option("WHAT", options->what, "symbol or path")
      ->required()
      ->check(CLI::IsMember({"symbol", "path"}))
      ->type_name("");
  parser->add_option("WANTED", options->name, "The symbol's name or the path that was asked for")
      ->required()
      ->check(refuse_empty)
      ->type_name("");
  parser->add_option("--index", options->index, "The index; standard input if it is -")
      ->required()
      ->check(refuse_empty)
      ->type_name("INDEX");
  options->request.add_to(*parser,
                          "The action of the call; by default detail for a symbol, symbols for a path");
  parser
      ->add_option("FILE", options->file,
                   "The answer, an object; standard input if FILE is -, {} if it is missing")
      ->type_name("");
  parser->add_flag("--pretty", options->pretty, "Indent the finished answer");
  parser->footer("Universal Ctags makes the index:\n  " + std::string(requests::kCtagsCommand) +
                 requests::kIndexForms);
  parser->callback([options] {
    if (options->index == "-" && options->file == "-") {
      throw CLI::ValidationError("--index", "the index and the answer cannot both be standard input");
    }
  });
  return {parser, [options] { return suggest(*options); }};
}

}  // namespace next_steps_program

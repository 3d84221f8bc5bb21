// next-steps suggest: the finished answer to a miss, from an index of ctags.
#include <memory>
#include <optional>
#include <string>

#include "next_steps/command.h"
#include "next_steps/ctags_index.h"
#include "next_steps/failures.h"
#include "next_steps/input.h"
#include "next_steps/json_reader.h"
#include "next_steps/output.h"
#include "vantrex/tool_handlers/next_steps.h"

namespace next_steps_program {

namespace module = vantrex::tool_handlers::next_steps;
using values::JsonObject;

namespace {

struct SuggestOptions {
  std::string what;
  std::string wanted;
  std::string index;
  std::optional<std::string> action;
  std::optional<std::string> file;
  bool pretty = false;
};

JsonObject read_answer(const std::string& file) {
  Input input(file, "an answer");
  try {
    return read_json_object(input.read_all(), "an answer");
  } catch (const JsonError& error) {
    throw InputRejected(input.name(), error);
  }
}

// Whether the index holds a symbol of that name or fqn, or that path.
bool holds(const vantrex::models::Repository& index, bool is_symbol, std::string_view wanted) {
  bool found = false;
  if (is_symbol) {
    index.visit_symbols([&](const auto& symbol) { found |= symbol.fqn == wanted || symbol.name == wanted; });
  } else {
    index.visit_paths([&](std::string_view path) { found |= path == wanted; });
  }
  return found;
}

ExitStatus suggest(const SuggestOptions& options) {
  const auto index = read_ctags_index(options.index);
  const bool is_symbol = options.what == "symbol";
  if (holds(index, is_symbol, options.wanted)) {
    throw InputRejected(options.wanted, "no miss: the index holds this " + options.what);
  }
  JsonObject answer = options.file ? read_answer(*options.file) : JsonObject();
  const std::string action = options.action.value_or(is_symbol ? "detail" : "symbols");
  (is_symbol ? module::suggest_symbols : module::suggest_paths)(answer, index, options.wanted, action);
  print_answer(module::finish_answer(answer, is_symbol ? "symbol" : "file", {.action = action}),
               options.pretty);
  return ExitStatus::done;
}

}  // namespace

Command add_suggest(CLI::App& program) {
  auto options = std::make_shared<SuggestOptions>();
  CLI::App* parser =
      program.add_subcommand("suggest", "Answer a symbol or a path that an index does not hold");
  parser->add_option("WHAT", options->what, "symbol or path")
      ->required()
      ->check(CLI::IsMember({"symbol", "path"}))
      ->type_name("");
  parser->add_option("WANTED", options->wanted, "The symbol's name or the path that was asked for")
      ->required()
      ->check([](const std::string& name) { return name.empty() ? "must not be empty" : ""; })
      ->type_name("");
  parser->add_option("--index", options->index, "The index; standard input when -")
      ->required()
      ->type_name("INDEX");
  parser
      ->add_option("--action", options->action, "The action that was asked for; detail or symbols when none")
      ->type_name("ACTION");
  parser->add_option("FILE", options->file, "The answer, an object; {} when none, standard input when -")
      ->type_name("");
  parser->add_flag("--pretty", options->pretty, "Indent the finished answer");
  parser->footer("Universal Ctags makes the index:\n  " + std::string(kCtagsCommand));
  parser->callback([options] {
    if (options->index == "-" && options->file == "-") {
      throw CLI::ValidationError("--index", "the index and the answer cannot both be standard input");
    }
  });
  return {parser, [options] { return suggest(*options); }};
}

}  // namespace next_steps_program

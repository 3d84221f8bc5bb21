// next-steps help: prints the help of the program or of a subcommand.
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/names.h"
#include "next_steps/usage.h"
#include "requests/output.h"

namespace next_steps_program {

namespace {

ExitStatus help(const CLI::App& program, const std::string& subcommand) {
  const bool is_program = subcommand.empty();
  const CLI::App& asked = is_program ? program : *program.get_subcommand(subcommand);
  const std::string name = program.get_name() + (is_program ? "" : " " + subcommand);
  requests::print(asked.get_formatter()->make_help(&asked, name, CLI::AppFormatMode::Normal));
  return ExitStatus::done;
}

}  // namespace

Command add_help(CLI::App& program) {
  auto subcommand = std::make_shared<std::string>();
  CLI::App* parser = program.add_subcommand("help", "Print the help of the program or of a subcommand");
  parser->add_option("SUBCOMMAND", *subcommand, "The subcommand; the program if it is missing")
      ->check([&program](const std::string& name) { return refuse_unknown_subcommand(program, name); })
      ->type_name("");
  return {parser, [&program, subcommand] { return help(program, *subcommand); }};
}

}  // namespace next_steps_program

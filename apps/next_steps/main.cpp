#include <csignal>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <vector>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/names.h"
#include "next_steps/usage.h"
#include "requests/failures.h"
#include "requests/output.h"
#include "vantrex/version.h"

namespace next_steps_program {
namespace {

// Prints the help, or what is wrong with the arguments.
ExitStatus answer_parse(const CLI::App& program, const CLI::ParseError& ending) {
  std::ostringstream asked_for;
  std::ostringstream wrong;
  const bool is_wrong = program.exit(ending, asked_for, wrong) != 0;
  std::cerr << wrong.str();
  requests::print(asked_for.str());
  return is_wrong ? ExitStatus::wrong_usage : ExitStatus::done;
}

ExitStatus run(int argument_count, char** arguments) {
  CLI::App program("Finishes the answers of a code-index tool server", "next-steps");
  program.set_version_flag("-V,--version", "next-steps " NEXT_STEPS_VERSION);
  program.require_subcommand(1);
  program.failure_message(usage_message);
  program.footer(
      "Exit status: 0 done, 1 input rejected, 2 wrong usage, 3 input or output failed, or out of memory.");
  const std::vector<Command> commands = {
      add_finish(program),    add_batch(program),
      add_suggest(program),   add_explain(program),
      add_catalogue(program), add_proxy(program, take_server(argument_count, arguments)),
      add_report(program)};
  try {
    if (argument_count == 1) throw CLI::CallForHelp();
    program.parse(reversed_arguments(program, argument_count, arguments));
  } catch (const CLI::ParseError& ending) {
    return answer_parse(program, ending);
  }
  for (const Command& command : commands) {
    if (command.parser->parsed()) return command.run();
  }
  return ExitStatus::wrong_usage;
}

}  // namespace
}  // namespace next_steps_program

int main(int argument_count, char** arguments) {
  using next_steps_program::ExitStatus;
  // SIGPIPE must end the program when the reader closes the pipe. The parent process may have
  // set it to be ignored.
  static_cast<void>(std::signal(SIGPIPE, SIG_DFL));
  ExitStatus status = ExitStatus::io_failed;
  try {
    status = next_steps_program::run(argument_count, arguments);
  } catch (const next_steps_requests::InputRejected& error) {
    std::cerr << error.what() << '\n';
    status = ExitStatus::input_rejected;
  } catch (const std::bad_alloc&) {
    std::cerr << "next-steps: out of memory\n";
  } catch (const std::exception& error) {
    std::cerr << "next-steps: " << error.what() << '\n';
  }
  return static_cast<int>(status);
}

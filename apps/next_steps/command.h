// The program's subcommands.
//
// Each subcommand is one file with an add_ function, which is declared here and called in
// main.cpp.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace next_steps_program {

// The exit statuses of the program.
enum class ExitStatus : int { done = 0, input_rejected = 1, wrong_usage = 2, io_failed = 3 };

struct Command {
  CLI::App* parser;  // owned by the program's parser
  // Runs the subcommand after the arguments are parsed. Throws InputRejected, IoFailed and
  // std::bad_alloc.
  std::function<ExitStatus()> run;
};

// Each adds a subcommand and its options to `program`.
Command add_finish(CLI::App& program);
Command add_batch(CLI::App& program);
Command add_suggest(CLI::App& program);
Command add_explain(CLI::App& program);
Command add_catalogue(CLI::App& program);
// `server` is the command that starts the server.
Command add_proxy(CLI::App& program, std::vector<std::string> server);
Command add_report(CLI::App& program);

}  // namespace next_steps_program

// next-steps proxy: finishes the answers of a tool server that knows nothing of it.
#include "proxy/proxy.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/options.h"
#include "next_steps/usage.h"

namespace next_steps_program {

namespace {

struct ProxyOptions {
  ServerOptions server;
  bool compact = false;
  std::string log;
  std::vector<std::string> command;
};

// The exit status of the server is that of the program.
ExitStatus proxy(ProxyOptions& options) {
  return static_cast<ExitStatus>(next_steps_proxy::run_proxy(
      options.command, {options.server.catalogue(), options.server.serves(), options.compact, options.log}));
}

}  // namespace

Command add_proxy(CLI::App& program, std::vector<std::string> server) {
  auto options = std::make_shared<ProxyOptions>();
  options->command = std::move(server);
  CLI::App* parser =
      program.add_subcommand("proxy", "Finish the answers of a tool server on the way to its client");
  options->server.add_to(*parser);
  parser->add_flag("--compact", options->compact,
                   "Finish the answers of all tools, also of those without rows");
  parser
      ->add_option("--log", options->log,
                   "Append a line for each finished answer, and for each call that is one of its steps")
      ->check(refuse_empty)
      ->type_name("FILE");
  parser->footer(
      "After the options comes the server: -- COMMAND [ARGUMENT...]\n"
      "It is started without a shell. Its exit status, or 128 + n after signal n, is that of the program.");
  parser->callback([options] {
    if (options->command.empty()) throw CLI::RequiredError("-- COMMAND");
  });
  return {parser, [options] { return proxy(*options); }};
}

}  // namespace next_steps_program

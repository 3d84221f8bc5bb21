// next-steps proxy: finishes the answers of a tool server that knows nothing of it.
#include "proxy/proxy.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/names.h"
#include "next_steps/serves_option.h"
#include "next_steps/usage.h"
#include "requests/failures.h"
#include "requests/input.h"
#include "requests/json_reader.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"

namespace next_steps_program {

namespace {

struct Options {
  std::string catalogue;
  ServesOption serves;
  bool compact = false;
  std::vector<std::string> command;
};

module::Catalogue read_catalogue(const std::string& file) {
  requests::Input input(file);
  const std::string text = input.read_all();
  try {
    return module::Catalogue::from_json(requests::read_json_object(text, "a catalogue"));
  } catch (const requests::JsonError& error) {
    throw requests::InputRejected(file, error.place().line, error.place().column, error.what());
  } catch (const module::CatalogueError& error) {
    throw requests::InputRejected(file, error.what());
  }
}

ExitStatus proxy(const Options& options) {
  std::optional<module::Catalogue> catalogue;
  if (!options.catalogue.empty()) catalogue = read_catalogue(options.catalogue);
  // The server's own exit status is the program's.
  return static_cast<ExitStatus>(next_steps_proxy::run_proxy(
      options.command, {catalogue ? &*catalogue : nullptr, options.serves.set(), options.compact}));
}

}  // namespace

Command add_proxy(CLI::App& program, std::vector<std::string> server) {
  auto options = std::make_shared<Options>();
  options->command = std::move(server);
  CLI::App* parser =
      program.add_subcommand("proxy", "Finish the answers of a tool server on the way to its client");
  parser->add_option("--catalogue", options->catalogue, "The tables of the server's steps")
      ->check(refuse_empty)
      ->type_name("FILE");
  options->serves.add_to(*parser);
  parser->add_flag("--compact", options->compact,
                   "Finish the answers of all tools, also of those without steps");
  parser->footer(
      "After the options comes the server: -- COMMAND [ARGUMENT...]\n"
      "It is started without a shell. Its exit status is that of the program, or 128 + n after signal n.");
  parser->callback([options] {
    if (options->command.empty()) throw CLI::RequiredError("-- COMMAND");
  });
  return {parser, [options] { return proxy(*options); }};
}

}  // namespace next_steps_program

#include "next_steps/usage.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "vantrex/logging/quoted_literal.h"
#include "vantrex/workers/unknown_name.h"

namespace next_steps_program {

namespace {

// An option of one of the subcommands, or null.
const CLI::Option* subcommand_option(const CLI::App& program, const std::string& name) {
  for (const CLI::App* subcommand : program.get_subcommands({})) {
    if (const CLI::Option* option = subcommand->get_option_no_throw(name)) return option;
  }
  return nullptr;
}

// Whether `argument` is "--option=" without a value, and the option takes one.
bool lacks_value(const CLI::App& program, std::string argument) {
  if (!argument.starts_with("--") || !argument.ends_with('=')) return false;
  argument.pop_back();
  const CLI::Option* option = subcommand_option(program, argument);
  return option != nullptr && option->get_items_expected_max() > 0;
}

std::set<std::string> options_of(const CLI::App& parser) {
  std::set<std::string> names;
  for (const CLI::Option* option : parser.get_options()) {
    for (const std::string& name : option->get_lnames()) names.insert("--" + name);
  }
  return names;
}

std::string unknown(std::string_view what, std::string_view name, const std::set<std::string>& names) {
  const std::vector<std::string_view> known(names.begin(), names.end());
  return vantrex::workers::unknown_name(what, name, known);
}

// The message about the word, which `parser`, the program or a subcommand, did not expect.
std::string unexpected(const CLI::App& parser, const std::string& word) {
  if (word.size() > 1 && word.front() == '-') {
    const std::string option = word.substr(0, word.find('='));
    if (subcommand_option(parser, option) != nullptr) return option + " must follow a subcommand";
    return unknown("option", option, options_of(parser));
  }
  if (parser.get_parent() == nullptr) {
    std::set<std::string> names;
    for (const CLI::App* subcommand : parser.get_subcommands({})) names.insert(subcommand->get_name());
    return unknown("subcommand", word, names);
  }
  return "unexpected argument " + vantrex::logging::printable(word);
}

std::string what_is_wrong(const CLI::App& program, const CLI::Error& error) {
  std::vector<const CLI::App*> parsers = {&program};
  for (const CLI::App* subcommand : program.get_subcommands()) parsers.push_back(subcommand);
  for (const CLI::App* parser : parsers) {
    for (const std::string& word : parser->remaining()) {
      if (word != "--") return unexpected(*parser, word);
    }
  }
  return error.what();
}

}  // namespace

std::vector<std::string> reversed_arguments(const CLI::App& program, int count, char** arguments) {
  std::vector<std::string> all;
  bool options_ended = false;
  for (std::string argument : std::vector<std::string>(arguments + 1, arguments + count)) {
    options_ended |= argument == "--";
    const bool split = !options_ended && lacks_value(program, argument);
    if (split) argument.pop_back();
    all.push_back(std::move(argument));
    if (split) all.emplace_back();
  }
  std::reverse(all.begin(), all.end());
  return all;
}

std::vector<std::string> take_server(int& count, char** arguments) {
  if (count < 2 || std::string_view(arguments[1]) != "proxy") return {};
  const auto is_mark = [](std::string_view word) { return word == "--"; };
  char** const mark = std::find_if(arguments, arguments + count, is_mark);
  std::vector<std::string> server(std::min(mark + 1, arguments + count), arguments + count);
  count = static_cast<int>(mark - arguments);
  return server;
}

std::string usage_message(const CLI::App* program, const CLI::Error& error) {
  return what_is_wrong(*program, error) + "\nRun with --help for more information.\n";
}

std::string refuse_empty(const std::string& value) {
  return value.empty() ? "must not be empty" : "";
}

}  // namespace next_steps_program

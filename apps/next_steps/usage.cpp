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

// The subcommand that has the option, or null.
const CLI::App* subcommand_with(const CLI::App& program, const std::string& option) {
  const auto subcommands = program.get_subcommands({});
  const auto has_it = [&](const CLI::App* each) { return each->get_option_no_throw(option) != nullptr; };
  const auto found = std::find_if(subcommands.begin(), subcommands.end(), has_it);
  return found == subcommands.end() ? nullptr : *found;
}

// Whether `argument` is "--option=" without a value, and the option takes one.
bool lacks_value(const CLI::App& program, std::string_view argument) {
  if (!argument.starts_with("--") || !argument.ends_with('=')) return false;
  const std::string option(argument.substr(0, argument.size() - 1));
  const CLI::App* subcommand = subcommand_with(program, option);
  return subcommand != nullptr && subcommand->get_option(option)->get_items_expected_max() > 0;
}

void add_options(const CLI::App& parser, std::set<std::string>& names) {
  for (const CLI::Option* option : parser.get_options()) {
    for (const std::string& name : option->get_lnames()) names.insert("--" + name);
  }
}

// The options of a subcommand; those of all subcommands, too, for the program.
std::set<std::string> known_options(const CLI::App& parser) {
  std::set<std::string> names;
  add_options(parser, names);
  for (const CLI::App* subcommand : parser.get_subcommands({})) add_options(*subcommand, names);
  return names;
}

std::set<std::string> known_subcommands(const CLI::App& program) {
  std::set<std::string> names;
  for (const CLI::App* subcommand : program.get_subcommands({})) names.insert(subcommand->get_name());
  return names;
}

std::string unknown(std::string_view what, std::string_view name, const std::set<std::string>& names) {
  const std::vector<std::string_view> known(names.begin(), names.end());
  return vantrex::workers::unknown_name(what, name, known);
}

// The message about the word, which `parser`, the program or a subcommand, did not expect.
std::string unexpected(const CLI::App& parser, const std::string& word) {
  const bool is_program = parser.get_parent() == nullptr;
  if (word.size() > 1 && word.front() == '-') {
    const std::string option = word.substr(0, word.find('='));
    if (subcommand_with(parser, option) != nullptr) return option + " must follow a subcommand";
    return unknown("option", option, known_options(parser));
  }
  if (is_program) return unknown("subcommand", word, known_subcommands(parser));
  return "unexpected argument " + vantrex::logging::printable(word);
}

// The message about the first word that `parser` did not expect, or "".
std::string first_unexpected(const CLI::App& parser) {
  for (const std::string& word : parser.remaining()) {
    if (word != "--") return unexpected(parser, word);
  }
  return "";
}

// The message about the first option that is given more than once but takes one value, or "".
std::string repeated(const CLI::App& parser) {
  for (const CLI::Option* option : parser.get_options()) {
    if (option->get_items_expected_max() == 1 && option->count() > 1) {
      return option->get_name() + " is given " + std::to_string(option->count()) + " times";
    }
  }
  return "";
}

std::string what_is_wrong(const CLI::App& program, const CLI::Error& error) {
  std::vector<const CLI::App*> parsers = {&program};
  for (const CLI::App* subcommand : program.get_subcommands()) parsers.push_back(subcommand);
  for (const auto& search : {first_unexpected, repeated}) {
    for (const CLI::App* parser : parsers) {
      if (std::string message = search(*parser); !message.empty()) return message;
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

std::string refuse_unknown_subcommand(const CLI::App& program, const std::string& name) {
  const std::set<std::string> known = known_subcommands(program);
  return known.contains(name) ? "" : unknown("subcommand", name, known);
}

}  // namespace next_steps_program

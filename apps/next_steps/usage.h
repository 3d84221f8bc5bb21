// The program's command line: what CLI11 does not do as users expect.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Error;
}  // namespace CLI

namespace next_steps_program {

// Returns the arguments as CLI::App::parse takes them, the last one first. "--action=" becomes two arguments,
// because CLI11 would take the next argument as its value. Throws std::bad_alloc.
std::vector<std::string> reversed_arguments(const CLI::App& program, int count, char** arguments);

// Takes the words from "--" on off the arguments of `proxy`, and returns those after it. CLI11 would change
// some: "[a,b]" becomes two. Throws std::bad_alloc.
std::vector<std::string> take_server(int& count, char** arguments);

// Returns the message about a command line that `program` could not parse. It names the first word that is
// unknown and the nearest known one. Throws std::bad_alloc.
std::string usage_message(const CLI::App* program, const CLI::Error& error);

// A check as CLI::Option::check takes it: returns what is wrong, or "".
std::string refuse_empty(const std::string& value);

}  // namespace next_steps_program

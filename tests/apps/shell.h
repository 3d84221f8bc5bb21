// Runs the program in a shell.
#pragma once

#include <string>
#include <string_view>

namespace vantrex::tests {

struct Ran {
  int status = 0;
  std::string out;
  std::string err;
};

// Runs `command` with `input` as standard input; `next-steps` and `code_index` are on the PATH.
Ran run(const std::string& command, std::string_view input = "");

// Whether `script` can run a command on a terminal.
bool has_terminal();

// Returns the contents of the file. Throws std::runtime_error when it cannot be read.
std::string read_file(const std::string& path);

}  // namespace vantrex::tests

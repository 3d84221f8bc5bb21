// Runs the program as a user does.
#pragma once

#include <string>
#include <string_view>

namespace vantrex::tests {

struct Ran {
  int status = 0;
  std::string out;
  std::string err;
};

// Runs `command` in a shell that finds `next-steps` and `code_index`, with `input` as standard
// input.
Ran run(const std::string& command, std::string_view input = "");

// Whether a command can be run on a terminal, by `script`.
bool has_terminal();

// The whole file at `path`. Throws std::runtime_error when it cannot be read.
std::string read_file(const std::string& path);

}  // namespace vantrex::tests

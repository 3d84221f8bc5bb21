// A small server of the Model Context Protocol, over an index of Universal Ctags.
//
//   ctags --output-format=json --fields=+nl -R -f - src >INDEX
//   code_index INDEX
//
// It reads messages from standard input, one per line, and writes its answers to
// standard output until the input ends. The index is read once.
#include <exception>
#include <iostream>
#include <string_view>

#include "ctags_repository.h"
#include "json_rpc.h"
#include "protocol.h"
#include "requests/input.h"
#include "requests/output.h"

namespace {

void serve(const code_index::CtagsRepository& index) {
  next_steps_requests::Output output;
  next_steps_requests::Input input("-");
  next_steps_requests::LineReader lines(input, [&output] { output.flush(); });
  const auto handle = [&index](std::string_view method, const code_index::JsonObject& params) {
    return code_index::call_method(index, method, params);
  };
  while (const auto line = lines.next()) {
    if (const auto answer = code_index::answer_line(*line, handle)) output.write(*answer + "\n");
  }
  output.flush();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: code_index INDEX\n";
    return 2;
  }
  try {
    serve(code_index::CtagsRepository(argv[1]));
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "code_index: " << error.what() << '\n';
    return 1;
  }
}

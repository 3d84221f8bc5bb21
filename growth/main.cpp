// growth BYTES INPUT...: runs each call on each of the inputs, with BYTES, 2 BYTES and 4 BYTES; an index has
// four times as many. Prints a line for each run: the call, the input and its bytes, separated by tabs.
// growth: prints the names of all inputs.
//
// scripts/growth counts the instructions of each call of `counted_run`.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <string_view>

#include "calls.h"
#include "inputs.h"

extern "C" [[gnu::noinline]] void counted_run(const vantrex::growth::Work& work) {
  work();
}

namespace vantrex::growth {

namespace {

void run(const Call& call, const Input& input, const std::string& text) {
  const Work work = call.prepare(text);
  counted_run(work);
  std::printf("%s\t%s\t%zu\n", call.name, input.name, text.size());
}

void run_all(const Input& input, std::size_t bytes) {
  if (input.kind == Kind::index) bytes *= 4;  // a line of an index is long
  for (const std::size_t factor : {1U, 2U, 4U}) {
    const std::string text = text_of(input, factor * bytes);
    for (const std::span<const Call> table : {name_calls(), answer_calls()}) {
      for (const Call& call : table) {
        if (call.kind == input.kind) run(call, input, text);
      }
    }
  }
}

int main(int argc, char** argv) {
  if (argc == 1) {
    for (const Input& input : inputs()) std::printf("%s\n", input.name);
    return 0;
  }
  const std::size_t bytes = std::strtoul(argv[1], nullptr, 10);
  for (int position = 2; position < argc; ++position) {
    const auto input = std::find_if(inputs().begin(), inputs().end(), [&](const Input& each) {
      return std::string_view(each.name) == argv[position];
    });
    if (input == inputs().end()) {
      std::fprintf(stderr, "growth: there is no input \"%s\"\n", argv[position]);
      return 2;
    }
    run_all(*input, bytes);
  }
  return 0;
}

}  // namespace

}  // namespace vantrex::growth

int main(int argc, char** argv) {
  try {
    return vantrex::growth::main(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "growth: %s\n", error.what());
    return 1;
  }
}

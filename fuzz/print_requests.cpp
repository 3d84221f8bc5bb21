// Prints random requests, each a line for `next-steps batch`; with the argument
// "answers", the naive reading's answers to them.
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"

namespace naive = vantrex::fuzz::naive;
using vantrex::fuzz::Request;

namespace {

std::string request_line(const Request& request) {
  vantrex::values::JsonObject line{{"response", request.answer}, {"tool", request.tool}};
  if (request.action) line.set("action", *request.action);
  if (request.arguments) line.set("arguments", *request.arguments);
  line.set("freshness", request.freshness);
  return naive::json_text(line);
}

}  // namespace

int main(int argc, char** argv) {
  constexpr std::uint64_t kRequests = 20000;
  const bool prints_answers = argc > 1 && std::string_view(argv[1]) == "answers";
  for (std::uint64_t seed = 0; seed < kRequests; ++seed) {
    Request request = vantrex::fuzz::Random(seed, vantrex::fuzz::Domain::json).request();
    request.serves.reset();
    const std::string line =
        prints_answers ? naive::json_text(naive::finish(request).answer) : request_line(request);
    std::puts(line.c_str());
  }
}

// Prints random requests, one a line, as `next-steps batch` reads them. With the argument "answers", prints
// the answers of the naive reading instead.
#include <cstdint>
#include <cstdio>
#include <string>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"

namespace naive = vantrex::fuzz::naive;
using vantrex::fuzz::Request;

int main(int argc, char** /*argv*/) {
  for (std::uint64_t seed = 0; seed < 20000; ++seed) {
    Request request = vantrex::fuzz::Random(seed, vantrex::fuzz::Domain::json).request();
    request.serves.reset();
    vantrex::values::JsonObject line{{"response", request.answer}, {"tool", request.tool}};
    if (request.action) line.set("action", *request.action);
    if (request.arguments) line.set("arguments", *request.arguments);
    line.set("freshness", request.freshness);
    std::puts(naive::json_text(argc > 1 ? naive::finish(request).answer : line).c_str());
  }
}

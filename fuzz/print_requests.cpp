// Prints random requests, each a line for `next-steps batch`, so that the
// answers of two builds can be compared.
#include <cstdint>
#include <cstdio>

#include "fuzz/support/random_tree.h"
#include "vantrex/values/text_forms.h"

int main() {
  constexpr std::uint64_t kRequests = 20000;
  for (std::uint64_t seed = 0; seed < kRequests; ++seed) {
    const auto request = vantrex::fuzz::Random(seed, vantrex::fuzz::Domain::json).request();
    vantrex::values::JsonObject line{{"response", request.answer}, {"tool", request.tool}};
    if (request.action) line.set("action", *request.action);
    if (request.arguments) line.set("arguments", *request.arguments);
    line.set("freshness", request.freshness);
    std::puts(compact_text(line).c_str());
  }
}

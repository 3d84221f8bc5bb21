// Writes random requests for `next-steps batch`, and the naive implementation's answers to them, one per
// line: random_requests COUNT REQUESTS ANSWERS, where the last two are files.
#include <cstdint>
#include <fstream>
#include <string>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"

int main(int /*count*/, char** arguments) {
  namespace fuzz = vantrex::fuzz;
  std::ofstream requests(arguments[2]);
  std::ofstream answers(arguments[3]);
  const std::uint64_t count = std::stoull(arguments[1]);
  for (std::uint64_t seed = 0; seed < count; ++seed) {
    const fuzz::Request request = fuzz::Random(seed, fuzz::Domain::json).request();
    requests << fuzz::naive::request_text(request) << '\n';
    answers << fuzz::naive::json_text(fuzz::naive::finish(request).answer) << '\n';
  }
  return requests && answers ? 0 : 1;
}

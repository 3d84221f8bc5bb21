// Prints random requests, one a line, as `next-steps batch` reads them. With the argument "answers", prints
// the replies of the naive reading instead.
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"

namespace naive = vantrex::fuzz::naive;
using vantrex::fuzz::Request;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

// One request in four has no id; the ids of the others are of different kinds.
std::optional<JsonValue> id_of(std::uint64_t seed) {
  switch (seed % 4) {
    case 0:
      return std::nullopt;
    case 1:
      return JsonValue();
    case 2:
      return seed;
    default:
      return JsonList::of("id", JsonObject{{"seed", seed}});
  }
}

JsonObject request_line(const Request& request) {
  JsonObject line{{"response", request.answer}, {"tool", request.tool}, {"freshness", request.freshness}};
  if (request.action) line.set("action", *request.action);
  if (request.arguments) line.set("arguments", *request.arguments);
  if (request.serves) line.set("serves", request.serves->names);
  return line;
}

}  // namespace

int main(int argc, char** /*argv*/) {
  constexpr std::uint64_t kRequests = 20000;
  const bool prints_replies = argc > 1;
  for (std::uint64_t seed = 0; seed < kRequests; ++seed) {
    const Request request = vantrex::fuzz::Random(seed, vantrex::fuzz::Domain::json).request();
    const std::optional<JsonValue> id = id_of(seed);
    JsonObject line = prints_replies ? naive::finish(request).answer : request_line(request);
    if (prints_replies && id) line = JsonObject{{"id", *id}, {"answer", line}};
    if (!prints_replies && id) line.set("id", *id);
    std::puts(naive::json_text(line).c_str());
  }
}

// Prints random requests, each a line for `next-steps batch`; with the argument
// "answers", the replies that the naive reading gives to them.
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/support/naive.h"
#include "fuzz/support/random_tree.h"

namespace naive = vantrex::fuzz::naive;
using vantrex::fuzz::Request;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

// Some requests have no id, some have null, and the others one of any kind.
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

int main(int argc, char** argv) {
  constexpr std::uint64_t kRequests = 20000;
  const bool prints_answers = argc > 1 && std::string_view(argv[1]) == "answers";
  for (std::uint64_t seed = 0; seed < kRequests; ++seed) {
    const Request request = vantrex::fuzz::Random(seed, vantrex::fuzz::Domain::json).request();
    const std::optional<JsonValue> id = id_of(seed);
    JsonObject line = prints_answers ? naive::finish(request).answer : request_line(request);
    if (prints_answers && id) line = JsonObject{{"id", *id}, {"answer", line}};
    if (!prints_answers && id) line.set("id", *id);
    std::puts(naive::json_text(line).c_str());
  }
}

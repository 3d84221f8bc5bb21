// A request, and the answer to it.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "requests/names.h"
#include "vantrex/models/repository.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/json_value.h"

namespace next_steps_requests {

enum class Wanted : std::uint8_t { symbol, path };

// Returns what "symbol" or "path" names, or nothing for any other text.
std::optional<Wanted> wanted_named(std::string_view name);

// A miss: a call for a symbol or a path that the index does not hold.
struct Miss {
  Wanted wanted;
  std::string name;  // of the symbol, or the path; not empty
};

// The index holds what was said to be missing.
class NoMiss : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

// Asks for the finished answer of a tool or to a miss.
struct Request {
  values::JsonObject response;        // the answer so far
  std::string tool;                   // the tool that answered; of no meaning for a miss
  std::optional<std::string> action;  // of the call
  std::optional<values::JsonObject> arguments;
  values::JsonValue freshness;                         // an object or null
  const module::ServedTools* serves = nullptr;         // borrowed
  std::optional<module::ServedTools> own_serves = {};  // replaces `serves` if the request itself has a set
  const module::Catalogue* catalogue = nullptr;        // borrowed; null for the module's tables
  std::optional<Miss> miss = {};
  bool explain = false;  // asks for the explanation instead
};

// Returns the finished answer, or its explanation as an object. A miss needs an index; its answer gets the
// nearest names. Throws NoMiss and std::bad_alloc.
values::JsonObject answer_to(Request request, const models::Repository* index = nullptr);

// Returns why the answer of a tool gets its steps; the request is for no miss. Throws std::bad_alloc.
module::Explanation explanation_of(Request request);

}  // namespace next_steps_requests

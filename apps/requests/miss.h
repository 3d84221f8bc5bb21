// A miss: a call for a symbol or a path that the index does not hold.
#pragma once

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "requests/names.h"
#include "vantrex/models/repository.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/json_value.h"

namespace next_steps_requests {

enum class Wanted : std::uint8_t { symbol, path };

// Returns what "symbol" or "path" names, or nothing for any other text.
std::optional<Wanted> wanted_named(std::string_view name);

struct Miss {
  Wanted wanted;
  std::string name;  // of the symbol, or the path; not empty
};

// The tool that a call for it asks, and the action if the call names none.
std::string_view tool_of(Wanted wanted);
std::string_view default_action(Wanted wanted);

// The index holds what was said to be missing.
class NoMiss : public std::invalid_argument {
 public:
  using std::invalid_argument::invalid_argument;
};

// Adds the nearest names in `index` to `response`, the answer to a call of `action`, with the step of
// `catalogue`; null for the module's. Throws NoMiss and std::bad_alloc.
void add_nearest(values::JsonObject& response, const models::Repository& index, const Miss& miss,
                 std::string_view action, const module::Catalogue* catalogue);

}  // namespace next_steps_requests

// Answers a miss: a symbol or a path that the index does not hold.
#pragma once

#include <cstdint>
#include <string_view>

#include "next_steps/request.h"
#include "vantrex/models/repository.h"
#include "vantrex/values/json_value.h"

namespace next_steps_program {

enum class Wanted : std::uint8_t { symbol, path };

// "symbol" or "path".
std::string_view text(Wanted wanted);

// The action to suggest when the request has none.
std::string_view default_action(Wanted wanted);

// Whether the index holds a symbol with that name or fqn, or that path.
bool holds(const vantrex::models::Repository& index, Wanted wanted, std::string_view name);

// Returns the finished answer to a miss of `name`: the response of `request` with the
// nearest names. `request` has an action; its tool is set here. Throws std::bad_alloc.
vantrex::values::JsonObject finished_miss(const vantrex::models::Repository& index, Wanted wanted,
                                          std::string_view name, Request request);

}  // namespace next_steps_program

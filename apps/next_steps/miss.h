// A miss to answer: a symbol or a path that the index does not hold.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "next_steps/request.h"
#include "vantrex/models/repository.h"
#include "vantrex/values/json_value.h"

namespace next_steps_program {

enum class Wanted : std::uint8_t { symbol, path };

// "symbol" or "path".
std::string_view text(Wanted wanted);

// The action that a step repeats when none was asked for.
std::string_view default_action(Wanted wanted);

// Whether the index holds a symbol of that name or fqn, or that path.
bool holds(const vantrex::models::Repository& index, Wanted wanted, std::string_view name);

// The finished answer to a miss of `name`. `request` has what is known of the rest: its
// response gets the nearest names, its tool is set here, its action is there. Throws
// std::bad_alloc.
vantrex::values::JsonObject finished_miss(const vantrex::models::Repository& index, Wanted wanted,
                                          std::string_view name, Request request);

}  // namespace next_steps_program

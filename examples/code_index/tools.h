// The tools of this server: each answers a request and finishes its answer.
#pragma once

#include "vantrex/models/repository.h"
#include "vantrex/values/json_value.h"

namespace code_index {

// The finished answer to `call`, an object like {"tool": "symbol", "args": {"action":
// "detail", "fqn": "pkg.run"}}. A step of an answer is such a call. Throws std::invalid_argument when no tool
// serves it, or when it lacks the tool's argument.
vantrex::values::JsonObject answer(const vantrex::models::Repository& index,
                                   const vantrex::values::JsonObject& call);

}  // namespace code_index

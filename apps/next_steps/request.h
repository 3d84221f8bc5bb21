// One answer to finish, with what is known about the request it answers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/explanation.h"
#include "vantrex/values/json_value.h"

namespace next_steps_program {

struct Request {
  vantrex::values::JsonObject response;  // the tool's answer
  std::string tool;
  std::optional<std::string> action;
  std::optional<vantrex::values::JsonObject> arguments;
  vantrex::values::JsonValue freshness;                                     // an object or null
  const vantrex::tool_handlers::next_steps::ServedTools* serves = nullptr;  // borrowed
};

// The request that one line of a batch holds: the object {"response": object,
// "tool": string, "action"?: string|null, "arguments"?: object|null,
// "freshness"?: object|null} and no other member. Throws JsonError, with the
// place of the member that is wrong, and std::bad_alloc.
Request read_request(std::string_view line);

// The finished answer to `request`, and why it got its steps. Throw
// std::bad_alloc.
vantrex::values::JsonObject finished(Request request);
vantrex::tool_handlers::next_steps::Explanation explanation(Request request);

}  // namespace next_steps_program

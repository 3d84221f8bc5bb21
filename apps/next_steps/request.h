// An answer to finish and the request that it answers.
#pragma once

#include <optional>
#include <string>

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
  // Replaces `serves` when the request itself says what the server has.
  std::optional<vantrex::tool_handlers::next_steps::ServedTools> own_serves;
};

// Return the finished answer, and why it got its steps. Throw std::bad_alloc.
vantrex::values::JsonObject finished(Request request);
vantrex::tool_handlers::next_steps::Explanation explanation(Request request);

}  // namespace next_steps_program

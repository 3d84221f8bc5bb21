// One line of a batch: what it asks, and the reply.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "next_steps/index_file.h"
#include "next_steps/json_reader.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace next_steps_program {

// What the requests of a batch share.
struct BatchContext {
  const vantrex::tool_handlers::next_steps::ServedTools* serves;  // null when it was not said
  IndexFile* index;                                               // null when none was given
};

struct BatchReply {
  std::string line;                // without a line feed
  std::optional<JsonError> error;  // what it says, when it is an error
};

// The reply to the line of number `line_number`. Throws std::bad_alloc.
//
// A request is an object, and one of
//   {"response": object, "tool": string, "action"?: string}: the finished answer;
//   the same with "explain": true: why that gets its steps;
//   {"suggest": "symbol" or "path", "wanted": string, "action"?: string,
//    "response"?: object}: the finished answer to a miss, from the index.
// Each may have "arguments" and "freshness", objects, "serves", a list of strings like
// "symbol:detail", and "id", any value. What is optional may be null.
//
// The reply is the answer, or {"error": {"line", "column", "message"}}. To a request with
// an id it is {"id", "answer"} or {"id", "error"}.
BatchReply reply_to(std::string_view line, std::size_t line_number, const BatchContext& context);

}  // namespace next_steps_program

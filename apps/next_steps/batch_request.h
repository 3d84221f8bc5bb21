// One line of a batch, and the reply to it.
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
  const vantrex::tool_handlers::next_steps::ServedTools* serves;  // null without --serves
  IndexFile* index;                                               // null without --index
  bool lossy;                                                     // for requests that do not say
};

struct BatchReply {
  std::string line;                // without a line feed
  std::optional<JsonError> error;  // set when the reply is an error
};

// Returns the reply to the line with the number `line_number`. Throws std::bad_alloc.
//
// A request is one of these objects:
//   {"response": object, "tool": string, "action"?: string}
//       asks for the finished answer; with "explain": true, for why it gets its steps;
//   {"suggest": "symbol" | "path", "wanted": string, "action"?: string, "response"?: object}
//       asks for the finished answer to a miss, from the index.
// Each may have "arguments" and "freshness", which are objects, "serves", which is a list
// of strings such as "symbol:detail", "lossy", which is a boolean, and "id", which is any
// value. An optional member may be null.
//
// "lossy": true replaces ill-formed UTF-8 and lone surrogates by U+FFFD; otherwise they are
// errors. Of a line that cannot be read as JSON, the id is known if it ends before the error.
//
// The reply is the answer, or {"error": {"line", "column", "message"}}. If the request has
// an id, the reply is {"id", "answer"} or {"id", "error"}.
BatchReply reply_to(std::string_view line, std::size_t line_number, const BatchContext& context);

}  // namespace next_steps_program

// Requests as JSON text, one object on one line.
#pragma once

#include <optional>
#include <string_view>

#include "requests/members.h"
#include "requests/names.h"
#include "requests/request.h"

namespace next_steps_requests {

// The form of a request and of its reply, as the help shows it.
inline constexpr std::string_view kRequestForms =
    R"(A request is one of these objects. A member with "?" may be absent or null.
  {"response": object, "tool": string, "action"?: string, "explain"?: boolean}
      asks for the finished answer; with "explain": true, for what explain --json prints
  {"suggest": "symbol" or "path", "wanted": string, "action"?: string, "response"?: object}
      asks for what suggest prints, from the index
Both may have
  "arguments"?: object, "freshness"?: object, "serves"?: ["symbol:detail", ...]
      as the options of finish
  "lossy"?: boolean
      true replaces ill-formed UTF-8 and lone surrogates by U+FFFD; otherwise they are errors
  "id": any value
      the reply is {"id", "answer"} or {"id", "error"}
Without an "id" the reply is the answer or {"error": {"line", "column", "message"}}.
)";

// Reads a request. If the encoding is wrong, and the request or else `lossy` allows that,
// replaces what is ill-formed. Throws std::bad_alloc.
ObjectReading read_request(std::string_view line, bool lossy);

// Returns the tool or the action that `text` names, "symbol" or "symbol:detail". Names consist of ASCII
// letters, digits, "_", "-" and ".". Throws std::invalid_argument for any other text, and std::bad_alloc.
module::ServedTool read_served_tool(std::string_view text);

// Returns the set that the list "serves" of `members` names, or nothing without one. Throws JsonError and
// std::bad_alloc.
std::optional<module::ServedTools> served_tools(Members& members);

// Takes the request out of its members. Throws JsonError and std::bad_alloc.
Request request_of(Members& members);

}  // namespace next_steps_requests

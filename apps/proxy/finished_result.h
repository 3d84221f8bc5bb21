// The result of a tool call, with its answer finished.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "proxy/step_log.h"
#include "requests/request.h"

namespace next_steps_proxy {

// Returns the line with the finished answer, or nothing if its result has no answer. The line is a response
// to the tool call that `request` describes; the answer is taken from the line. Throws JsonError and
// std::bad_alloc.
//
// The answer is "structuredContent" if that is an object, otherwise the only text if that is the JSON text of
// an object. A text that equals the structured content is replaced along with it. `log` takes note of the
// answer, with the bytes of the text that is replaced, or else of the structured content; it may be null.
std::optional<std::string> finished_result(std::string_view line, next_steps_requests::Request request,
                                           StepLog* log);

}  // namespace next_steps_proxy

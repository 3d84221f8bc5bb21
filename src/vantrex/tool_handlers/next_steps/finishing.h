// The pipeline that every answer passes through before it is sent.
//
// Ownership: an answer is taken by value. Pass it with std::move when it is no
// longer needed: it is finished in place, nothing in it is copied, and it is
// consumed, also on failure. Passed as an lvalue, it is copied first and never
// changes. Threads: no state is kept, so any number of threads may finish answers
// at once, as lvalues also the same one.
#pragma once

#include <cstddef>
#include <string_view>

#include "vantrex/export.h"
#include "vantrex/tool_handlers/next_steps/optional_text.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// `value` without the object fields whose value is null, at any depth. Null items
// of lists stay, and so do objects that become empty. Throws only std::bad_alloc.
NEXT_STEPS_API values::JsonValue without_null_fields(values::JsonValue value);
NEXT_STEPS_API values::JsonObject without_null_fields(values::JsonObject object);

// What finish_answer is told beside the answer and the tool, by name:
// finish_answer(std::move(answer), "symbol", {.action = "callers", .arguments = &request}).
// Read what the options need of an answer before the call that takes it.
struct FinishOptions {
  // The action that the tool ran; absent for a tool without actions.
  OptionalText action = nullptr;
  // The request's arguments, borrowed for the call; null when there were none. They
  // must not lie in the answer.
  const values::JsonObject* arguments = nullptr;
  // The index's freshness block, null while the index is current.
  values::JsonValue freshness = nullptr;
  // What the server has, borrowed for the call; null when it has every tool. Steps
  // from the tables that it does not have are left out; own steps and those of a
  // miss are the handler's word and stay.
  const ServedTools* serves = nullptr;
};

// The finished answer to a request: `response` without its null fields, with
// the freshness block, and with "next_steps" as its last field when there is a
// step to take. `tool_name` is the tool that answered; it must not lie in the
// answer. Throws std::bad_alloc.
NEXT_STEPS_API values::JsonObject finish_answer(values::JsonObject response, std::string_view tool_name,
                                                FinishOptions options = {});
values::JsonObject finish_answer(values::JsonObject response, std::nullptr_t,
                                 FinishOptions options = {}) = delete;

}  // namespace vantrex::tool_handlers::next_steps

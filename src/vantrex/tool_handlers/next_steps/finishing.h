// The pipeline that every answer passes through before it is sent.
//
// Ownership: an answer is taken by value. Moved, it is finished in place without copies, and it is consumed,
// also on failure. Passed as an lvalue, it is copied and unchanged. Threads: no state; safe for concurrent
// calls, also with the same lvalue.
#pragma once

#include <cstddef>
#include <string_view>

#include "vantrex/export.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/optional_text.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

/// `value` without the object fields whose value is null, at any depth. Null items of lists stay, and so
/// do objects that become empty. Throws only std::bad_alloc.
NEXT_STEPS_API values::JsonValue without_null_fields(values::JsonValue value);
/// The same for an object.
NEXT_STEPS_API values::JsonObject without_null_fields(values::JsonObject object);

/// The named arguments of finish_answer:
///   finish_answer(std::move(answer), "symbol", {.action = "callers", .arguments = &request})
struct FinishOptions {
  /// The action that the tool ran; absent for a tool without actions.
  OptionalText action = nullptr;
  /// The request's arguments, borrowed for the call; null if there are none. Must not lie in the answer.
  const values::JsonObject* arguments = nullptr;
  /// The index's freshness block; null while the index is current.
  values::JsonValue freshness = nullptr;
  /// The tools that the server has, borrowed for the call; null if it has every tool. Signals, usual
  /// follow-ups and the step of a miss are left out if they call another tool. Other own steps stay.
  const ServedTools* serves = nullptr;
  /// The server's own catalogue, borrowed for the call; null for the module's tables. With `serves` or an own
  /// catalogue, an answer to a miss ("found" is false, "did_you_mean" is a list) gets no steps from the
  /// tables.
  const Catalogue* catalogue = nullptr;
};

/// The finished answer to a request: `response` without null fields, with the freshness block, and with
/// "next_steps" as its last field if there is a step. `tool_name` is the tool that answered; it must not lie
/// in the answer. To pass options that depend on the answer, read them before the call. Throws
/// std::bad_alloc.
NEXT_STEPS_API values::JsonObject finish_answer(values::JsonObject response, std::string_view tool_name,
                                                FinishOptions options = {});
/// A null pointer is not the name of a tool.
values::JsonObject finish_answer(values::JsonObject response, std::nullptr_t,
                                 FinishOptions options = {}) = delete;

}  // namespace vantrex::tool_handlers::next_steps

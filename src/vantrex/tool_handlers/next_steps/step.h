// The step record: a call that the agent may make next.
//
// A pure function.
#pragma once

#include "vantrex/export.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

/// A new step: the object {"tool": tool, "args": args, "reason": reason}. Ill-formed UTF-8 in `tool` and
/// `reason` is replaced by U+FFFD. Throws only std::bad_alloc.
NEXT_STEPS_API values::JsonObject step(const values::TextArgument& tool, const values::TextArgument& reason,
                                       values::JsonObject args = {});

}  // namespace vantrex::tool_handlers::next_steps

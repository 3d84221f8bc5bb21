// The step record: a call that the agent may make next.
//
// A pure function.
#pragma once

#include <utility>

#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

/// A new step: the object {"tool": tool, "args": args, "reason": reason}. Ill-formed UTF-8 in `tool` and
/// `reason` is replaced by U+FFFD. Throws only std::bad_alloc.
inline values::JsonObject step(const values::TextArgument& tool, const values::TextArgument& reason,
                               values::JsonObject args = {}) {
  return {{"tool", tool.lossy_text()}, {"args", std::move(args)}, {"reason", reason.lossy_text()}};
}

}  // namespace vantrex::tool_handlers::next_steps

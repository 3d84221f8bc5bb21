#include "vantrex/tool_handlers/next_steps/step.h"

#include <utility>

namespace vantrex::tool_handlers::next_steps {

using values::JsonObject;
using values::TextArgument;

JsonObject step(const TextArgument& tool, const TextArgument& reason, JsonObject args) {
  return {{"tool", tool.lossy_text()}, {"args", std::move(args)}, {"reason", reason.lossy_text()}};
}

}  // namespace vantrex::tool_handlers::next_steps

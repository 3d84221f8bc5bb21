#include "next_steps/request.h"

#include <utility>

#include "vantrex/tool_handlers/next_steps.h"

namespace next_steps_program {

namespace module = vantrex::tool_handlers::next_steps;
using vantrex::values::JsonObject;

namespace {

module::FinishOptions options_of(Request& request) {
  return {.action = std::move(request.action),
          .arguments = request.arguments ? &*request.arguments : nullptr,
          .freshness = std::move(request.freshness),
          .serves = request.own_serves ? &*request.own_serves : request.serves};
}

}  // namespace

JsonObject finished(Request request) {
  return module::finish_answer(std::move(request.response), request.tool, options_of(request));
}

module::Explanation explanation(Request request) {
  return module::explain_answer(std::move(request.response), request.tool, options_of(request));
}

}  // namespace next_steps_program

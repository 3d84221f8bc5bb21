#include "requests/request.h"

#include <utility>

#include "vantrex/tool_handlers/next_steps.h"

namespace next_steps_requests {

using values::JsonObject;

namespace {

module::FinishOptions options_of(Request& request) {
  return {.action = std::move(request.action),
          .arguments = request.arguments ? &*request.arguments : nullptr,
          .freshness = std::move(request.freshness),
          .serves = request.own_serves ? &*request.own_serves : request.serves,
          .catalogue = request.catalogue};
}

}  // namespace

JsonObject answer_to(Request request, const models::Repository* index) {
  if (request.explain) return explanation_of(std::move(request)).to_dict();
  if (request.miss) {
    request.tool = tool_of(request.miss->wanted);
    if (!request.action) request.action = default_action(request.miss->wanted);
    add_nearest(request.response, *index, *request.miss, *request.action, request.catalogue);
  }
  return module::finish_answer(std::move(request.response), request.tool, options_of(request));
}

module::Explanation explanation_of(Request request) {
  return module::explain_answer(std::move(request.response), request.tool, options_of(request));
}

}  // namespace next_steps_requests

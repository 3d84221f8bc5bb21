#include "next_steps/request.h"

#include <array>
#include <utility>

#include "next_steps/members.h"
#include "vantrex/tool_handlers/next_steps.h"

namespace next_steps_program {

namespace module = vantrex::tool_handlers::next_steps;
using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

module::FinishOptions options_of(Request& request) {
  return {.action = std::move(request.action),
          .arguments = request.arguments ? &*request.arguments : nullptr,
          .freshness = std::move(request.freshness),
          .serves = request.serves};
}

}  // namespace

Request read_request(std::string_view line) {
  constexpr std::array<std::string_view, 5> kKnown = {"response", "tool", "action", "arguments", "freshness"};
  Members members(line, "a request");
  members.refuse_others(kKnown);
  Request request;
  request.response = std::move(*members.wanted("response", Kind::object, "an object").object());
  request.tool = *std::as_const(members.wanted("tool", Kind::string, "a string")).string();
  if (const JsonValue* action = members.allowed("action", Kind::string, "a string or null")) {
    request.action = *action->string();
  }
  if (JsonValue* arguments = members.allowed("arguments", Kind::object, "an object or null")) {
    request.arguments = std::move(*arguments->object());
  }
  if (JsonValue* freshness = members.allowed("freshness", Kind::object, "an object or null")) {
    request.freshness = std::move(*freshness);
  }
  return request;
}

JsonObject finished(Request request) {
  return module::finish_answer(std::move(request.response), request.tool, options_of(request));
}

module::Explanation explanation(Request request) {
  return module::explain_answer(std::move(request.response), request.tool, options_of(request));
}

}  // namespace next_steps_program

#include "requests/reply.h"

#include <utility>

#include "requests/request_text.h"
#include "vantrex/tool_handlers/tool_result.h"

namespace next_steps_requests {

using values::JsonObject;
using values::JsonValue;
using vantrex::tool_handlers::tool_result_text;

namespace {

JsonObject error_object(std::size_t line_number, const JsonError& error) {
  return {{"line", line_number - 1 + error.place().line},
          {"column", error.place().column},
          {"message", error.what()}};
}

// Returns {"id": id, name: result}; without an id, {name: result}.
JsonObject enveloped(std::optional<JsonValue> id, std::string_view name, JsonObject result) {
  JsonObject reply;
  if (id) reply.append("id", *std::move(id));
  reply.append(name, std::move(result));
  return reply;
}

JsonObject answer(Members& members, const ReplyContext& context) {
  Request request = request_of(members);
  request.serves = context.serves;
  request.catalogue = context.catalogue;
  if (!request.miss) return answer_to(std::move(request));
  if (context.index == nullptr) {
    members.reject("suggest",
                   "needs an index; the option --index, or \"index\" of a session, names its file");
  }
  try {
    return answer_to(std::move(request), context.index->current().get());
  } catch (const NoMiss& error) {
    members.reject("wanted", std::string("is ") + error.what());
  }
}

}  // namespace

Reply reply_to(std::string_view line, std::size_t line_number, const ReplyContext& context) {
  ObjectReading reading = read_request(line, context.lossy);
  std::optional<JsonValue> id;
  if (Field& field = *reading.find("id"); field.is_there()) id = std::move(field.value);
  try {
    Members members(line, std::move(reading));
    JsonObject reply = answer(members, context);
    if (id) reply = enveloped(std::move(id), "answer", std::move(reply));
    return {tool_result_text(reply), std::nullopt};
  } catch (const JsonError& error) {
    return {tool_result_text(enveloped(std::move(id), "error", error_object(line_number, error))), error};
  }
}

}  // namespace next_steps_requests

#include "next_steps/batch_request.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <utility>

#include "next_steps/members.h"
#include "next_steps/miss.h"
#include "next_steps/request.h"
#include "next_steps/serves_option.h"
#include "vantrex/tool_handlers/tool_result.h"

namespace next_steps_program {

namespace module = vantrex::tool_handlers::next_steps;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

std::string string_of(const JsonValue& value) {
  return std::string(*value.string());
}

// Returns the set that the list "serves" names.
module::ServedTools served_tools(const JsonList& names, const Members& members) {
  module::ServedTools served;
  for (const JsonValue& each : names) {
    if (!each.string()) members.reject("serves", "must be a list of strings");
    try {
      served.add(read_served_tool(*each.string()));
    } catch (const std::invalid_argument& error) {
      members.reject("serves", std::string("is wrong: ") + error.what());
    }
  }
  return served;
}

constexpr std::string_view kWhat = "a request";

// Reads the line strictly; with replacements if its encoding is wrong and the request is lossy.
ObjectReading read_request(std::string_view line, const BatchContext& context) {
  ObjectReading strict = read_members(line, kWhat);
  if (!strict.error || !strict.error->concerns_encoding()) return strict;
  ObjectReading lossy = read_members(line, kWhat, Encoding::lossy);
  const bool is_lossy = lossy.object["lossy"].boolean().value_or(context.lossy);
  return is_lossy ? std::move(lossy) : std::move(strict);
}

// Rejects members that are neither common to all requests nor among `own`.
void reject_others(const Members& members, const std::array<std::string_view, 2>& own) {
  const std::array<std::string_view, 9> known = {"id",     "response", "action", "arguments", "freshness",
                                                 "serves", "lossy",    own[0],   own[1]};
  members.reject_others(known);
}

// Returns a request with the members that are common to all requests.
Request common_request(Members& members, const BatchContext& context) {
  Request request;
  request.serves = context.serves;
  if (JsonValue* response = members.optional("response", Kind::object, "an object")) {
    request.response = std::move(*response->object());
  }
  if (const JsonValue* action = members.optional("action", Kind::string, "a string or null")) {
    request.action = string_of(*action);
  }
  if (JsonValue* arguments = members.optional("arguments", Kind::object, "an object or null")) {
    request.arguments = std::move(*arguments->object());
  }
  if (JsonValue* freshness = members.optional("freshness", Kind::object, "an object or null")) {
    request.freshness = std::move(*freshness);
  }
  members.optional("lossy", Kind::boolean, "a boolean or null");  // read_request() has followed it
  if (const JsonValue* serves = members.optional("serves", Kind::list, "a list or null")) {
    request.own_serves = served_tools(*serves->list(), members);
  }
  return request;
}

JsonObject finish(Members& members, const BatchContext& context) {
  reject_others(members, {"tool", "explain"});
  members.required("response", Kind::object, "an object");
  const std::string tool = string_of(members.required("tool", Kind::string, "a string"));
  const JsonValue* explain = members.optional("explain", Kind::boolean, "a boolean or null");
  Request request = common_request(members, context);
  request.tool = tool;
  if (explain != nullptr && *explain->boolean()) return explanation(std::move(request)).to_dict();
  return finished(std::move(request));
}

Wanted what_is_wanted(Members& members) {
  const std::string what = string_of(members.required("suggest", Kind::string, "a string"));
  for (const Wanted wanted : {Wanted::symbol, Wanted::path}) {
    if (text(wanted) == what) return wanted;
  }
  members.reject("suggest", R"(must be "symbol" or "path")");
}

JsonObject suggest(Members& members, const BatchContext& context) {
  reject_others(members, {"suggest", "wanted"});
  const Wanted wanted = what_is_wanted(members);
  const std::string name = string_of(members.required("wanted", Kind::string, "a string"));
  if (name.empty()) members.reject("wanted", "must not be empty");
  Request request = common_request(members, context);
  if (!request.action) request.action = default_action(wanted);
  if (context.index == nullptr)
    members.reject("suggest", "needs an index: start the batch with --index FILE");
  const vantrex::models::Repository& index = context.index->current();
  if (holds(index, wanted, name)) {
    members.reject("wanted", "is no miss: the index holds this " + std::string(text(wanted)));
  }
  return finished_miss(index, wanted, name, std::move(request));
}

JsonObject error_object(std::size_t line_number, const JsonError& error) {
  return {{"line", line_number}, {"column", error.place().column}, {"message", error.what()}};
}

// Returns {"id": id, name: result}; without an id, {name: result}.
JsonObject enveloped(std::optional<JsonValue> id, std::string_view name, JsonObject result) {
  JsonObject reply;
  if (id) reply.append("id", *std::move(id));
  reply.append(name, std::move(result));
  return reply;
}

}  // namespace

BatchReply reply_to(std::string_view line, std::size_t line_number, const BatchContext& context) {
  ObjectReading reading = read_request(line, context);
  std::optional<JsonValue> id = reading.object.remove("id");
  try {
    Members members(line, kWhat, std::move(reading));
    JsonObject answer = members.has("suggest") ? suggest(members, context) : finish(members, context);
    if (id) answer = enveloped(std::move(id), "answer", std::move(answer));
    return {vantrex::tool_handlers::tool_result_text(answer), std::nullopt};
  } catch (const JsonError& error) {
    const JsonObject reply = enveloped(std::move(id), "error", error_object(line_number, error));
    return {vantrex::tool_handlers::tool_result_text(reply), error};
  }
}

}  // namespace next_steps_program

#include "json_rpc.h"

#include <cstddef>
#include <exception>

#include "requests/json_reader.h"
#include "vantrex/values/text_forms.h"

namespace code_index {

using vantrex::values::Text;

namespace {

constexpr std::size_t kMaxLineBytes = std::size_t{1} << 20;
constexpr std::size_t kMaxBatch = 100;  // messages: an answer may be much longer than its request

JsonObject response(const JsonValue& id, std::string_view field, JsonObject value) {
  return {{"jsonrpc", "2.0"}, {"id", id}, {field, std::move(value)}};
}

JsonObject error_response(const JsonValue& id, const RpcError& error) {
  return response(id, "error", error.to_json());
}

JsonValue read_message(std::string_view line) {
  if (line.size() > kMaxLineBytes) throw RpcError(kInvalidRequest, "A message has at most 1 MiB");
  try {
    return next_steps_requests::read_json(line);
  } catch (const next_steps_requests::JsonError& error) {
    throw RpcError(kParseError, "Column " + std::to_string(error.place().column) + ": " + error.what());
  }
}

const JsonObject& checked_request(const JsonValue& message) {
  const JsonObject* request = message.object();
  if (request == nullptr || (*request)["jsonrpc"].string() != "2.0" || !(*request)["method"].string()) {
    throw RpcError(kInvalidRequest, R"(A request is an object with "jsonrpc": "2.0" and a "method")");
  }
  return *request;
}

JsonObject params_of(const JsonObject& request) {
  if (!request.contains("params")) return {};
  if (const JsonObject* params = request["params"].object()) return *params;
  throw RpcError(kInvalidParams, R"("params" must be an object)");
}

JsonValue id_of(const JsonValue& message) {
  const JsonObject* object = message.object();
  return object == nullptr ? nullptr : (*object)["id"];
}

// Whether `message` is a client's answer. This server asks nothing, so it needs none.
bool is_response(const JsonValue& message) {
  const JsonObject* object = message.object();
  return object != nullptr && !object->contains("method") &&
         (object->contains("result") || object->contains("error"));
}

std::optional<JsonValue> answer_one(const JsonValue& message, const Handler& handle) {
  if (is_response(message)) return std::nullopt;
  try {
    const JsonObject& request = checked_request(message);
    if (!request.contains("id")) return std::nullopt;
    return response(request["id"], "result", handle(*request["method"].string(), params_of(request)));
  } catch (const RpcError& error) {
    return error_response(id_of(message), error);
  } catch (const std::exception& error) {
    return error_response(id_of(message), RpcError(kInternalError, error.what()));
  }
}

// A list is a batch, as one revision of the protocol has it. Its answers are a list, too.
std::optional<JsonValue> answer_message(const JsonValue& message, const Handler& handle) {
  const JsonList* batch = message.list();
  if (batch == nullptr || batch->empty()) return answer_one(message, handle);
  if (batch->size() > kMaxBatch) throw RpcError(kInvalidRequest, "A batch has at most 100 messages");
  JsonList answers;
  for (const JsonValue& each : *batch) {
    if (auto answer = answer_one(each, handle)) answers.push_back(*std::move(answer));
  }
  return answers.empty() ? std::nullopt : std::optional<JsonValue>(std::move(answers));
}

}  // namespace

JsonObject RpcError::to_json() const {
  JsonObject error{{"code", static_cast<int>(code_)}, {"message", Text::lossy(what())}};
  if (!data_.is_null()) error.set("data", data_);
  return error;
}

std::optional<std::string> answer_line(std::string_view line, const Handler& handle) {
  try {
    const auto answer = answer_message(read_message(line), handle);
    return answer ? std::optional(compact_text(*answer)) : std::nullopt;
  } catch (const RpcError& error) {
    return compact_text(error_response(nullptr, error));
  }
}

}  // namespace code_index

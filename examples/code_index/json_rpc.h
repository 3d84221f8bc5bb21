// JSON-RPC 2.0, one message a line.
#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "vantrex/values/json_value.h"

namespace code_index {

using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

enum ErrorCode : int {
  kParseError = -32700,
  kInvalidRequest = -32600,
  kMethodNotFound = -32601,
  kInvalidParams = -32602,
  kInternalError = -32603,
  kUnsupportedVersion = -32022,
};

// The error that answers a request which has no result.
class RpcError : public std::runtime_error {
 public:
  RpcError(ErrorCode code, const std::string& message, JsonValue data = nullptr)
      : std::runtime_error(message), code_(code), data_(std::move(data)) {}

  // {"code", "message"}, and "data" when there is some.
  JsonObject to_json() const;

 private:
  ErrorCode code_;
  JsonValue data_;
};

// Returns the result of a method. Throws RpcError.
using Handler = std::function<JsonObject(std::string_view method, const JsonObject& params)>;

// The answer to the message in `line`; nothing when none is due, as for a notification or a
// response. A line of more than 1 MiB and a list of more than 100 messages are errors.
std::optional<std::string> answer_line(std::string_view line, const Handler& handle);

}  // namespace code_index

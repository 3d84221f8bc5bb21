#include "protocol.h"

#include <algorithm>
#include <array>
#include <string>

#include "tool_list.h"
#include "tools.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/values/text_forms.h"
#include "vantrex/version.h"

namespace code_index {

namespace {

// The versions that begin with a handshake, the newest first, and the one without.
constexpr std::array<std::string_view, 4> kHandshakeVersions = {"2025-11-25", "2025-06-18", "2025-03-26",
                                                                "2024-11-05"};
constexpr std::string_view kStatelessVersion = "2026-07-28";
constexpr const char* kVersionKey = "io.modelcontextprotocol/protocolVersion";
constexpr const char* kServerInfoKey = "io.modelcontextprotocol/serverInfo";

constexpr const char* kInstructions =
    "An index of source code. Each of an answer's next_steps is a call of these tools: \"tool\" is the name, "
    "\"args\" are the arguments.";

JsonObject server_info() {
  return {{"name", "code_index"}, {"version", NEXT_STEPS_VERSION}};
}

JsonObject capabilities() {
  return {{"tools", JsonObject()}};
}

JsonObject initialize(const CtagsRepository& /*index*/, const JsonObject& params) {
  const auto requested = params["protocolVersion"].string();
  if (!requested) throw RpcError(kInvalidParams, R"("protocolVersion" must be a string)");
  const auto* known = std::find(kHandshakeVersions.begin(), kHandshakeVersions.end(), *requested);
  return {{"protocolVersion", known == kHandshakeVersions.end() ? kHandshakeVersions.front() : *known},
          {"capabilities", capabilities()},
          {"serverInfo", server_info()},
          {"instructions", kInstructions}};
}

// Results that never change may be kept by the client: for an hour, and for anybody.
JsonObject cacheable(JsonObject result) {
  result.set("ttlMs", 3'600'000);
  result.set("cacheScope", "public");
  return result;
}

JsonObject discover(const CtagsRepository& /*index*/, const JsonObject& /*params*/) {
  return cacheable({{"supportedVersions", JsonList::of(kStatelessVersion)},
                    {"capabilities", capabilities()},
                    {"instructions", kInstructions},
                    {"_meta", JsonObject{{kServerInfoKey, server_info()}}}});
}

JsonObject ping(const CtagsRepository& /*index*/, const JsonObject& /*params*/) {
  return {};
}

JsonObject list_tools(const CtagsRepository& /*index*/, const JsonObject& /*params*/) {
  return cacheable({{"tools", tool_list()}});
}

JsonObject tool_result(const std::string& text, bool is_error) {
  const JsonObject content{{"type", "text"}, {"text", text}};
  return {{"content", JsonList::of(content)}, {"isError", is_error}};
}

JsonObject call_tool(const CtagsRepository& index, const JsonObject& params) {
  const JsonObject* tool = find_tool(params["name"].string().value_or(""));
  if (tool == nullptr) throw RpcError(kInvalidParams, "There is no tool " + compact_text(params["name"]));
  const JsonObject no_arguments;
  const bool has_arguments = params.contains("arguments");
  const JsonObject* arguments = has_arguments ? params["arguments"].object() : &no_arguments;
  if (arguments == nullptr) throw RpcError(kInvalidParams, R"("arguments" must be an object)");
  try {
    check_arguments(*tool, *arguments);
  } catch (const WrongArguments& error) {
    return tool_result(error.what(), true);
  }
  JsonObject answer = finished_answer(index, *(*tool)["name"].string(), *arguments);
  JsonObject result = tool_result(vantrex::tool_handlers::tool_result_text(answer), false);
  result.set("structuredContent", std::move(answer));
  return result;
}

struct Method {
  std::string_view name;
  JsonObject (*run)(const CtagsRepository& index, const JsonObject& params);
};

constexpr std::array<Method, 5> kMethods = {{{"initialize", initialize},
                                             {"server/discover", discover},
                                             {"ping", ping},
                                             {"tools/list", list_tools},
                                             {"tools/call", call_tool}}};

// Whether the request itself names the protocol's version. Throws RpcError for any version but the one
// without a handshake.
bool names_version(const JsonObject& params) {
  const JsonObject* meta = params["_meta"].object();
  if (meta == nullptr || !meta->contains(kVersionKey)) return false;
  const JsonValue& requested = (*meta)[kVersionKey];
  if (requested.string() == kStatelessVersion) return true;
  throw RpcError(kUnsupportedVersion, "Unsupported protocol version",
                 JsonObject{{"supported", JsonList::of(kStatelessVersion)}, {"requested", requested}});
}

}  // namespace

JsonObject call_method(const CtagsRepository& index, std::string_view method, const JsonObject& params) {
  const bool is_stateless = names_version(params);
  const auto* found =
      std::find_if(kMethods.begin(), kMethods.end(), [&](const Method& each) { return each.name == method; });
  if (found == kMethods.end())
    throw RpcError(kMethodNotFound, "There is no method " + compact_text(JsonValue(method)));
  JsonObject result = found->run(index, params);
  if (is_stateless) result.set("resultType", "complete");
  return result;
}

}  // namespace code_index

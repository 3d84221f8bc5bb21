#include "requests/request_text.h"

#include <array>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "vantrex/tool_handlers/next_steps/rules.h"

namespace next_steps_requests {

using values::JsonList;
using values::JsonValue;
using values::Kind;

namespace {

bool is_name(std::string_view text) {
  constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-.";
  return !text.empty() && text.find_first_not_of(kLetters) == std::string_view::npos;
}

constexpr const char* kRequest = "a request";
constexpr std::array<std::string_view, 11> kRequestKeys = {"id",        "response", "action", "arguments",
                                                           "freshness", "serves",   "lossy",  "tool",
                                                           "explain",   "suggest",  "wanted"};

// Rejects members that are neither common to all requests nor `first` or `second`.
void allow_only(const Members& members, std::string_view first, std::string_view second) {
  const std::array<std::string_view, 9> allowed = {"id",     "response", "action", "arguments", "freshness",
                                                   "serves", "lossy",    first,    second};
  members.allow_only(allowed, kRequest);
}

// Reads the members of a request for a tool's answer.
Request tool_request(Members& members) {
  allow_only(members, "tool", "explain");
  Request request;
  request.response = std::move(*members.required("response", Kind::object).object());
  request.tool = members.text("tool");
  request.explain = members.optional("explain", Kind::boolean).boolean().value_or(false);
  return request;
}

// Reads the members of a request for the answer to a miss.
Request miss_request(Members& members) {
  allow_only(members, "suggest", "wanted");
  Request request;
  const auto wanted = wanted_named(members.text("suggest"));
  if (!wanted) members.reject("suggest", R"(must be "symbol" or "path")");
  request.miss = {*wanted, std::string(members.text("wanted"))};
  if (request.miss->name.empty()) members.reject("wanted", "must not be empty");
  if (auto* response = members.optional("response", Kind::object).object()) {
    request.response = std::move(*response);
  }
  return request;
}

}  // namespace

module::ServedTool read_served_tool(std::string_view text) {
  const auto [tool, action] = module::split_key(text);
  if (!is_name(tool) || (action && !is_name(*action))) {
    throw std::invalid_argument("\"" + std::string(text) + "\" is neither TOOL nor TOOL:ACTION");
  }
  return {.tool = std::string(tool), .action = action};
}

std::optional<module::ServedTools> served_tools(Members& members) {
  const JsonList* names = members.optional("serves", Kind::list).list();
  if (names == nullptr) return std::nullopt;
  std::vector<module::ServedTool> served;
  for (const JsonValue& each : *names) {
    if (!each.string()) members.reject("serves", "must be a list of strings");
    try {
      served.push_back(read_served_tool(*each.string()));
    } catch (const std::invalid_argument& error) {
      members.reject("serves", std::string("is wrong: ") + error.what());
    }
  }
  return module::ServedTools(std::move(served));
}

ObjectReading read_request(std::string_view line, bool lossy) {
  ObjectReading strict = read_fields(line, kRequest, kRequestKeys);
  if (!strict.error || !strict.error->concerns_encoding()) return strict;
  ObjectReading replaced = read_fields(line, kRequest, kRequestKeys, Encoding::lossy);
  return replaced.find("lossy")->value.boolean().value_or(lossy) ? std::move(replaced) : std::move(strict);
}

Request request_of(Members& members) {
  Request request = members.has("suggest") ? miss_request(members) : tool_request(members);
  if (const auto action = members.optional("action", Kind::string).string())
    request.action = std::string(*action);
  if (auto* arguments = members.optional("arguments", Kind::object).object()) {
    request.arguments = std::move(*arguments);
  }
  request.freshness = std::move(members.optional("freshness", Kind::object));
  request.own_serves = served_tools(members);
  members.optional("lossy", Kind::boolean);  // only checked: read_request() has followed it
  return request;
}

}  // namespace next_steps_requests

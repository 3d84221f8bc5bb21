#include "proxy/conversation.h"

#include <utility>

#include "proxy/finished_result.h"
#include "proxy/json_spans.h"
#include "proxy/names.h"
#include "requests/json_reader.h"
#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_proxy {

using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

// The text of an id, or "" if it is none. An id may be escaped in one direction only.
std::string id_text(std::string_view span) {
  if (span.empty()) return "";
  const JsonValue id = requests::read_json(span);
  const bool is_id = id.kind() == Kind::string || id.kind() == Kind::integer || id.kind() == Kind::floating;
  std::string text = is_id ? values::compact_text(id) : "";
  if (text.ends_with(".0")) text.resize(text.size() - 2);  // 1 and 1.0 are the same number
  return text;
}

}  // namespace

void Conversation::from_client(std::string_view line) {
  visit_items(line, [this](std::string_view message) {
    try {
      take_request(message);
    } catch (const requests::JsonError&) {  // it concerns this message only
    }
  });
  take_request(line);
}

void Conversation::take_request(std::string_view message) {
  const auto [method_span, id_span, parameters] = members_of(message, {"method", "id", "params"});
  const std::string method = string_in(method_span);
  if (method == "notifications/cancelled")
    in_flight_.erase(id_text(members_of(parameters, {"requestId"})[0]));
  const std::string id = id_text(id_span);
  if (method.empty() || id.empty()) return;
  if (method == "tools/call") call(id, parameters);
  if (method == "tools/list") list(id, parameters);
}

void Conversation::call(const std::string& id, std::string_view parameters) {
  in_flight_.erase(id);  // a new request with an old id
  const std::string tool = string_in(members_of(parameters, {"name"})[0]);
  const bool is_touched = tools_.touches(tool);
  if (tool.empty() || !(is_touched || log_ != nullptr)) return;
  requests::Request request;
  request.tool = tool;
  request.catalogue = options_.catalogue;
  // All parameters are read, which checks the encoding of the name, too.
  auto arguments = requests::read_json_object(parameters, "parameters").remove("arguments");
  if (arguments && arguments->object() != nullptr) {
    request.arguments = std::move(*arguments->object());
    const auto action = std::as_const(*request.arguments)["action"].string();
    if (action) request.action = std::string(*action);
  }
  if (log_ != nullptr) log_->note_call(tool, request.arguments ? *request.arguments : module::kNoFields);
  if (!is_touched) return;
  in_flight_[id] = [this, request = std::move(request)](std::string_view answer) mutable {
    request.serves = tools_.served();
    return finished_result(answer, std::move(request), log_);
  };
}

void Conversation::list(const std::string& id, std::string_view parameters) {
  std::string cursor = string_in(members_of(parameters, {"cursor"})[0]);
  in_flight_[id] = [this, cursor = std::move(cursor)](std::string_view answer) {
    return tools_.add_page(answer, cursor);
  };
}

std::optional<std::string> Conversation::from_server(std::string_view line) {
  if (in_flight_.empty()) return std::nullopt;
  visit_items(line, [this](std::string_view message) { take(message); });
  const OnAnswer on_answer = take(line);
  return on_answer ? on_answer(line) : std::nullopt;
}

// Forgets the call that is answered. Returns what to do with a result, or null.
Conversation::OnAnswer Conversation::take(std::string_view answer) {
  const auto [id, method, result, error] = members_of(answer, {"id", "method", "result", "error"});
  if (!method.empty() || (result.empty() && error.empty())) return nullptr;
  const auto found = in_flight_.extract(id_text(id));
  return found.empty() || result.empty() ? nullptr : std::move(found.mapped());
}

}  // namespace next_steps_proxy

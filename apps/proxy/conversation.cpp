#include "proxy/conversation.h"

#include <utility>

#include "proxy/finished_result.h"
#include "proxy/json_spans.h"
#include "proxy/names.h"
#include "requests/json_reader.h"
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
  return is_id ? values::compact_text(id) : "";
}

// The string in `span`, or nothing.
std::optional<std::string> string_in(std::string_view span) {
  if (!span.starts_with('"')) return std::nullopt;
  if (span.find('\\') == std::string_view::npos) return std::string(span.substr(1, span.size() - 2));
  const JsonValue text = requests::read_json(span);
  return std::string(text.string().value_or(""));
}

}  // namespace

void Conversation::from_client(std::string_view line) {
  const auto [method_span, id, parameters] = members_of(line, {"method", "id", "params"});
  const std::string method = string_in(method_span).value_or("");
  if (method == "tools/call") call(line, id_text(id), parameters);
  if (method == "tools/list") list(id_text(id), parameters);
  if (method == "notifications/cancelled")
    in_flight_.erase(id_text(members_of(parameters, {"requestId"})[0]));
}

void Conversation::call(std::string_view line, const std::string& id, std::string_view parameters) {
  const std::optional<std::string> tool = string_in(members_of(parameters, {"name"})[0]);
  if (id.empty() || !tool || !tools_.touches(*tool)) return;
  JsonObject message = requests::read_json_object(line, "a message");
  requests::Request request;
  request.tool = *tool;
  request.catalogue = options_.catalogue;
  JsonValue* const arguments = message.find("params")->object()->find("arguments");
  if (arguments != nullptr && arguments->object() != nullptr) {
    request.arguments = std::move(*arguments->object());
    const auto action = std::as_const(*request.arguments)["action"].string();
    if (action) request.action = std::string(*action);
  }
  in_flight_[id] = [this, request = std::move(request)](std::string_view answer) mutable {
    request.serves = tools_.served();
    return finished_result(answer, std::move(request));
  };
}

void Conversation::list(const std::string& id, std::string_view parameters) {
  if (id.empty()) return;
  in_flight_[id] = [this, cursor = string_in(members_of(parameters, {"cursor"})[0])](
                       std::string_view answer) { return tools_.add_page(answer, cursor); };
}

std::optional<std::string> Conversation::from_server(std::string_view line) {
  if (in_flight_.empty()) return std::nullopt;
  for (const std::string_view message : items_of(line)) take(message);
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

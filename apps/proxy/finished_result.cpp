#include "proxy/finished_result.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "proxy/json_spans.h"
#include "proxy/names.h"
#include "requests/json_reader.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_proxy {

using values::JsonObject;
using values::JsonValue;

namespace {

// Whether the result is the whole answer of a call that succeeded.
bool is_complete(const JsonObject& result) {
  const JsonValue& failed = result["isError"];
  const JsonValue& type = result["resultType"];
  return (failed.is_null() || failed == false) && (type.is_null() || type == "complete");
}

// The position of the only text in the content, or nothing.
std::optional<std::size_t> only_text(const JsonValue& content) {
  std::optional<std::size_t> found;
  if (content.list() == nullptr) return found;
  for (std::size_t i = 0; i < content.list()->size(); ++i) {
    if (content[i]["type"] != "text") continue;
    if (found) return std::nullopt;
    found = i;
  }
  return found;
}

// The object whose JSON text `text` is, or nothing.
std::optional<JsonObject> object_in(std::string_view text) {
  try {
    return requests::read_json_object(text, "an answer");
  } catch (const requests::JsonError&) {
    return std::nullopt;
  }
}

bool are_equal(const JsonObject& a, const JsonObject& b) {
  return a == b || values::canonical_text(a) == values::canonical_text(b);
}

}  // namespace

std::optional<std::string> finished_result(std::string_view line, requests::Request request, StepLog* log) {
  JsonObject message = requests::read_json_object(line, "a message");
  JsonObject* const result = message.find("result")->object();
  if (result == nullptr || !is_complete(*result)) return std::nullopt;
  const JsonValue& content = std::as_const(*result)["content"];
  const std::optional<std::size_t> text = only_text(content);
  std::optional<JsonObject> told;
  if (text) told = object_in(content[*text]["text"].string().value_or(""));
  JsonValue* const structured = result->find("structuredContent");
  JsonObject* const answer = structured == nullptr ? nullptr : structured->object();
  if (answer == nullptr && !told) return std::nullopt;

  const bool replaces_text = told && (answer == nullptr || are_equal(*told, *answer));
  request.response = std::move(answer == nullptr ? *told : *answer);
  const auto spans = members_of(members_of(line, {"result"})[0], {"structuredContent", "content"});
  if (log != nullptr) {
    log->note_answer(request, replaces_text ? content[*text]["text"].string()->size() : spans[0].size());
  }
  const std::string finished = values::compact_text(requests::answer_to(std::move(request)));
  std::vector<NewValue> changes;
  if (answer != nullptr) changes.push_back({spans[0], finished});
  if (replaces_text) {
    visit_items(spans[1], [&, position = std::size_t{0}](std::string_view item) mutable {
      if (position++ != *text) return;
      changes.push_back({members_of(item, {"text"})[0], values::compact_text(JsonValue(finished))});
    });
  }
  return spliced(line, std::move(changes));
}

}  // namespace next_steps_proxy

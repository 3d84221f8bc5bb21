#include "vantrex/tool_handlers/next_steps/answer_view.h"

#include "vantrex/models/symbol.h"

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// Compares the keys of fields that may be or hold a list only: most fields of an answer cannot.
std::vector<const JsonList*> hit_lists_in(const JsonObject& answer, const Tables& tables) {
  std::vector<const JsonList*> lists(tables.hit_lists.size());
  for (const auto& [key, value] : answer) {
    if (value.list() == nullptr && value.object() == nullptr) continue;
    for (std::size_t place = 0; place < lists.size(); ++place) {
      const KeyPath path = tables.hit_lists[place];
      if (path.front() == key.view()) lists[place] = value_at(value, path.subspan(1)).list();
    }
  }
  return lists;
}

}  // namespace

std::optional<Integer> stated_integer(const JsonValue& value) noexcept {
  if (const auto boolean = value.boolean()) return Integer(*boolean ? 1 : 0);
  return value.integer();
}

AnswerView::AnswerView(const JsonObject& answer, const JsonObject* request_arguments, const Tables& tables)
    : response(answer),
      arguments(request_arguments == nullptr ? kNoFields : *request_arguments),
      tables_(tables),
      hit_lists_(hit_lists_in(answer, tables)),
      hit_count_(_hit_count()) {}

std::optional<Integer> AnswerView::_hit_count() const {
  for (const KeyPath path : tables_.counts) {
    if (auto count = stated_integer(value_at(response, path))) return count;
  }
  for (const JsonList* list : hit_lists_) {
    if (list != nullptr) return Integer(list->size());
  }
  return std::nullopt;
}

const JsonValue& AnswerView::requested_or_answered(std::string_view key) const noexcept {
  const JsonValue& requested = arguments[key];
  return requested.is_empty() ? response[key] : requested;
}

bool _is_code_hit(const JsonObject& item) noexcept {
  return models::is_code_symbol(item["kind"].string(), item["file"].string());
}

const JsonValue* item_path(const JsonValue& item, PlainStrings strings) noexcept {
  if (item.text() != nullptr) return strings == PlainStrings::are_paths ? &item : nullptr;
  return if_string(item["path"]);
}

}  // namespace vantrex::tool_handlers::next_steps

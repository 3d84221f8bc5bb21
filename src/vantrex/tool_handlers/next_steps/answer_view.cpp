#include "vantrex/tool_handlers/next_steps/answer_view.h"

#include "vantrex/models/symbol.h"

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

std::optional<Integer> stated_integer(const JsonValue& value) noexcept {
  if (const auto boolean = value.boolean()) return Integer(*boolean ? 1 : 0);
  return value.integer();
}

AnswerView::AnswerView(const JsonObject& answer, const JsonObject* request_arguments, const Tables& tables)
    : response(answer),
      arguments(request_arguments == nullptr ? kNoFields : *request_arguments),
      tables_(tables),
      hit_lists_(tables.hit_lists.size()) {
  find_hit_lists();
  hit_count_ = _hit_count();
}

void AnswerView::find_hit_lists() noexcept {
  const std::span<const KeyPath> paths = tables_.hit_lists;
  const bool nested = tables_.has_nested_hits;
  for (const auto& [key, value] : response) {
    if (value.list() == nullptr && !(nested && value.object() != nullptr)) continue;
    const std::string_view name = key.view();
    for (std::size_t place = 0; place < paths.size(); ++place) {
      const KeyPath path = paths[place];
      if (path.front() == name) hit_lists_[place] = value_at(value, path.subspan(1)).list();
    }
  }
}

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

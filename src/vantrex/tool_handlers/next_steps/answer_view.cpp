#include "vantrex/tool_handlers/next_steps/answer_view.h"

#include <algorithm>

#include "vantrex/models/symbol.h"

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

constinit const JsonObject kNoArguments;

}  // namespace

AnswerView::AnswerView(const JsonObject& answer, const JsonObject* request_arguments, const Tables& tables)
    : response(answer),
      arguments(request_arguments == nullptr ? kNoArguments : *request_arguments),
      tables_(tables) {
  const std::size_t count = tables.hit_lists.size();
  if (count > few_lists_.size()) many_lists_.resize(count);
  hit_lists_ = {count > few_lists_.size() ? many_lists_.data() : few_lists_.data(), count};
  find_hit_lists();
  hit_count_ = _hit_count();
}

void AnswerView::find_hit_lists() noexcept {
  for (const auto& [key, value] : response) {
    if (value.list() == nullptr && value.object() == nullptr) continue;
    for (std::size_t place = 0; place < hit_lists_.size(); ++place) {
      const KeyPath path = tables_.hit_lists[place];
      if (path[0] == key.view()) hit_lists_[place] = value_at(value, path.subspan(1)).list();
    }
  }
}

std::optional<Integer> AnswerView::_hit_count() const {
  for (const KeyPath path : tables_.counts) {
    if (auto count = value_at(response, path).integer()) return count;
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

const JsonValue& value_at(const JsonValue& value, KeyPath path) noexcept {
  const JsonValue* reached = &value;
  for (const std::string_view key : path) {
    const JsonObject* object = reached->object();
    reached = &(object == nullptr ? kNoArguments : *object)[key];
  }
  return *reached;
}

const JsonValue& value_at(const JsonObject& object, KeyPath path) noexcept {
  return value_at(object[path[0]], path.subspan(1));
}

bool _is_code_hit(const JsonObject& item) noexcept {
  return models::is_code_symbol(item["kind"].string(), item["file"].string());
}

const JsonValue* item_path(const JsonValue& item, PlainStrings strings) noexcept {
  if (const JsonObject* object = item.object()) return if_string((*object)["path"]);
  return strings == PlainStrings::are_paths ? if_string(item) : nullptr;
}

}  // namespace vantrex::tool_handlers::next_steps

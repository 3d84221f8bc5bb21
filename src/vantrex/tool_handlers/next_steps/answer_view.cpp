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

using HitLists = std::array<const JsonList*, _HIT_LISTS.size()>;

HitLists find_hit_lists(const JsonObject& response) noexcept {
  HitLists lists{};
  for (const auto& [key, value] : response) {
    const JsonList* list = value.list();
    if (list == nullptr) continue;
    const auto* name = std::find(_HIT_LISTS.begin(), _HIT_LISTS.end(), key.view());
    if (name != _HIT_LISTS.end()) lists[static_cast<std::size_t>(name - _HIT_LISTS.begin())] = list;
  }
  return lists;
}

std::optional<Integer> _hit_count(const JsonObject& response, const HitLists& lists) {
  if (auto count = stated_integer(response["total_count"])) return count;
  if (auto count = stated_integer(response["total"])) return count;
  const auto* first =
      std::find_if(lists.begin(), lists.end(), [](const JsonList* list) { return list != nullptr; });
  return first == lists.end() ? std::nullopt : std::optional<Integer>((*first)->size());
}

}  // namespace

std::optional<Integer> stated_integer(const JsonValue& value) noexcept {
  if (const auto boolean = value.boolean()) return Integer(*boolean ? 1 : 0);
  return value.integer();
}

AnswerView::AnswerView(const JsonObject& answer, const JsonObject* request_arguments)
    : response(answer),
      arguments(request_arguments == nullptr ? kNoArguments : *request_arguments),
      hit_lists_(find_hit_lists(answer)),
      hit_count_(_hit_count(answer, hit_lists_)) {}

const JsonValue& AnswerView::requested_or_answered(std::string_view key) const noexcept {
  const JsonValue& requested = arguments[key];
  return requested.is_empty() ? response[key] : requested;
}

bool _is_code_hit(const JsonObject& item) noexcept {
  return models::is_code_symbol(item["kind"].string(), item["file"].string());
}

const JsonValue* item_path(const JsonValue& item, PlainStrings strings) noexcept {
  if (const JsonObject* object = item.object()) return if_string((*object)["path"]);
  return strings == PlainStrings::are_paths ? if_string(item) : nullptr;
}

}  // namespace vantrex::tool_handlers::next_steps

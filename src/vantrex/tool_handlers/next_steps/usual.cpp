#include "vantrex/tool_handlers/next_steps/usual.h"

#include <algorithm>
#include <utility>

#include "vantrex/models/symbol.h"
#include "vantrex/tool_handlers/next_steps/test_scope.h"

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::TextLiteral;

namespace {

// The field of a hit that holds what `takes` asks for.
constexpr std::string_view hit_field(Takes takes) {
  return takes == Takes::component ? std::string_view("name") : text(takes).view();
}

// The hit lists of an answer in the order of _HIT_LISTS, null where it has none.
using HitLists = std::array<const JsonList*, _HIT_LISTS.size()>;

HitLists hit_lists(const JsonObject& response) noexcept {
  HitLists lists{};
  for (const auto& [key, value] : response) {
    const JsonList* list = value.list();
    if (list == nullptr) continue;
    const auto* name = std::find(_HIT_LISTS.begin(), _HIT_LISTS.end(), key.view());
    if (name != _HIT_LISTS.end()) lists[static_cast<std::size_t>(name - _HIT_LISTS.begin())] = list;
  }
  return lists;
}

// What `item` of the hit list `list_name` gives, or null.
const JsonValue* taken_from_hit(const JsonValue& item, std::string_view list_name, Takes takes) {
  if (const JsonObject* hit = item.object()) {
    if (takes == Takes::fqn && !_is_code_hit(*hit)) return nullptr;
    const JsonValue& value = (*hit)[hit_field(takes)];
    return value.string() ? &value : nullptr;
  }
  const bool is_file = takes == Takes::path && list_name == "files" && item.string();
  return is_file ? &item : nullptr;
}

// What the first hit that has it gives, or null.
const JsonValue* taken_from_hits(const JsonObject& response, Takes takes) {
  const HitLists lists = hit_lists(response);
  for (std::size_t place = 0; place < lists.size(); ++place) {
    if (lists[place] == nullptr) continue;
    for (const JsonValue& item : *lists[place]) {
      if (const JsonValue* value = taken_from_hit(item, _HIT_LISTS[place], takes)) return value;
    }
  }
  return nullptr;
}

}  // namespace

std::optional<Integer> _hit_count(const JsonObject& response) {
  if (auto count = response["total_count"].integer()) return count;
  if (auto count = response["total"].integer()) return count;
  const HitLists lists = hit_lists(response);
  const auto* first =
      std::find_if(lists.begin(), lists.end(), [](const JsonList* list) { return list != nullptr; });
  return first == lists.end() ? std::nullopt : std::optional<Integer>((*first)->size());
}

bool _is_code_hit(const JsonObject& item) noexcept {
  return models::is_code_symbol(item["kind"].string(), item["file"].string());
}

JsonValue _taken(const JsonObject& response, Takes takes, const JsonObject& arguments) {
  if (takes == Takes::query) {
    const JsonValue& requested = arguments["query"];
    return requested.is_empty() ? response["query"] : requested;
  }
  if (const JsonValue& own = response["fqn"]; takes == Takes::fqn && own.string()) return own;
  if (const JsonValue& own = response["file"]; takes == Takes::path && own.string()) return own;
  if (const JsonValue* value = taken_from_hits(response, takes)) return *value;
  if (takes == Takes::path || takes == Takes::fqn) {
    const JsonValue& requested = arguments[text(takes)];
    if (requested.string()) return requested;
  }
  return nullptr;
}

const FollowUps* usual_row(std::string_view tool, std::optional<std::string_view> action) noexcept {
  const FollowUps* row = detail::find_joined(NEXT_STEPS, tool, action);
  return row != nullptr ? row : NEXT_STEPS.find(tool);
}

bool has_no_hits(const JsonObject& response) {
  return _hit_count(response) == Integer(0);
}

std::variant<JsonObject, Lack> hint_arguments(const Hint& hint, const JsonObject& response,
                                              const JsonObject& arguments, bool no_hits) {
  JsonObject args;
  args.reserve(2);
  if (hint.action) args.append(TextLiteral("action"), *hint.action);
  if (hint.takes == Takes::changed_files) {
    const JsonObject scope = _tests_scope(response, arguments);
    if (scope.empty()) return Lack::scope;
    for (const auto& [key, value] : scope) args.append(key, value);
  } else if (hint.takes) {
    if (no_hits) return Lack::hits;
    JsonValue value = _taken(response, *hint.takes, arguments);
    if (value.is_null()) return Lack::argument;
    args.append(text(*hint.takes), std::move(value));
  }
  return args;
}

JsonList _usual(const JsonObject& response, std::string_view tool, std::optional<std::string_view> action,
                const JsonObject& arguments) {
  JsonList steps;
  const FollowUps* row = usual_row(tool, action);
  if (row == nullptr) return steps;
  steps.reserve(row->hints().size());
  const bool no_hits = has_no_hits(response);
  for (const Hint* hint : row->hints()) {
    auto given = hint_arguments(*hint, response, arguments, no_hits);
    if (auto* args = std::get_if<JsonObject>(&given)) {
      steps.push_back(step(hint->tool, hint->reason, std::move(*args)));
    }
  }
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

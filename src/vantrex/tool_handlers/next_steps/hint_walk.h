// visit_hints: visits the hint fields of a value, at any depth, without recursion.
//
// A hint field inside another one is not visited.
#pragma once

#include <algorithm>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/limits.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::tool_handlers::next_steps {

// The fields or items of an open container that are still to be visited.
struct HintLevel {
  const values::JsonField* field;
  const values::JsonField* fields_end;  // null in a list
  const values::JsonValue* item;
  const values::JsonValue* items_end;
};

inline bool is_hint_key(std::string_view key) noexcept {
  return std::find(HINT_KEYS.begin(), HINT_KEYS.end(), key) != HINT_KEYS.end();
}

// Calls `on_hint(value, levels)` for each hint field of `object` or else of `list`, in order; either may be
// null. `levels` are the open levels, outermost first; in each, the field or item that leads to the hint is
// the one before the next to visit. Throws std::bad_alloc and what `on_hint` throws.
template <typename OnHint>
void visit_hints(const values::JsonObject* object, const values::JsonList* list, OnHint on_hint) {
  values::WalkStack<HintLevel> levels;
  const auto open = [&levels](const values::JsonObject* fields, const values::JsonList* items) {
    if (fields != nullptr) levels.push(fields->begin(), fields->end(), nullptr, nullptr);
    if (items != nullptr) levels.push(nullptr, nullptr, items->begin(), items->end());
    return fields != nullptr || items != nullptr;
  };
  // Visits the rest of a level. Returns false if it opened a nested container instead.
  const auto visit_rest = [&](HintLevel& level) {
    while (level.field != level.fields_end) {
      const auto& [key, value] = *level.field++;
      if (is_hint_key(key.view())) {
        on_hint(value, levels);
      } else if (open(value.object(), value.list())) {
        return false;
      }
    }
    while (level.item != level.items_end) {
      const values::JsonValue& item = *level.item++;
      if (open(item.object(), item.list())) return false;
    }
    return true;
  };
  open(object, list);
  while (!levels.empty()) {
    if (visit_rest(levels.top())) levels.pop();
  }
}

}  // namespace vantrex::tool_handlers::next_steps

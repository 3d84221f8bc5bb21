// HintWalk: visits the hint fields of a value, at any depth, without recursion.
//
// A hint field inside another one is not visited.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "vantrex/tool_handlers/next_steps/limits.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::tool_handlers::next_steps {

// Calls `on_hint(value, levels)` for each hint field, in order. `levels` are the open levels, outermost
// first; in each, the field or item that leads to the hint is the one before the next to visit. Throws
// std::bad_alloc and what `on_hint` throws.
template <typename OnHint>
class HintWalk {
 public:
  // The fields or items of a container that are still to be visited.
  struct Level {
    const values::JsonField* field;
    const values::JsonField* fields_end;  // null in a list
    const values::JsonValue* item;
    const values::JsonValue* items_end;
  };

  explicit HintWalk(OnHint on_hint) : on_hint_(std::move(on_hint)) {}

  void open(const values::JsonObject& object) {
    levels_.push(object.begin(), object.end(), nullptr, nullptr);
  }
  void open(const values::JsonList& list) { levels_.push(nullptr, nullptr, list.begin(), list.end()); }
  // Opens a list or an object; false for any other value.
  bool open(const values::JsonValue& value) {
    if (const values::JsonObject* object = value.object()) {
      open(*object);
    } else if (const values::JsonList* list = value.list()) {
      open(*list);
    } else {
      return false;
    }
    return true;
  }

  void finish() {
    while (!levels_.empty()) {
      if (visit_rest(levels_.top())) levels_.pop();
    }
  }

 private:
  static bool is_hint_key(std::string_view key) noexcept {
    return std::find(HINT_KEYS.begin(), HINT_KEYS.end(), key) != HINT_KEYS.end();
  }

  // Visits the rest of a level. Returns false if it opened a nested container instead.
  bool visit_rest(Level& level) {
    while (level.field != level.fields_end) {
      const values::JsonField& field = *level.field++;
      if (is_hint_key(field.key.view())) {
        on_hint_(field.value, levels_);
      } else if (open(field.value)) {
        return false;
      }
    }
    while (level.item != level.items_end) {
      if (open(*level.item++)) return false;
    }
    return true;
  }

  OnHint on_hint_;
  values::WalkStack<Level> levels_;
};

}  // namespace vantrex::tool_handlers::next_steps

#include "vantrex/tool_handlers/next_steps/budget.h"

#include <algorithm>
#include <utility>

#include "vantrex/values/text_forms.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::tool_handlers::next_steps {

using values::compact_size;
using values::JsonField;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Text;

namespace {

// Adds up the hint fields of a tree.
class HintWalk {
 public:
  void open(const JsonObject& object) { walk_.push({object.begin(), object.end(), nullptr, nullptr}); }
  void open(const JsonList& list) { walk_.push({nullptr, nullptr, list.begin(), list.end()}); }
  void open(const JsonValue& value) {
    if (const JsonObject* object = value.object()) open(*object);
    if (const JsonList* list = value.list()) open(*list);
  }

  std::size_t finish() {
    std::size_t bytes = 0;
    while (!walk_.empty()) {
      Level& level = walk_.top();
      if (level.field != level.fields_end) {
        const JsonField& field = *level.field++;
        if (is_hint_key(field.key)) {
          bytes += _encoded_size(field.value);
        } else {
          open(field.value);
        }
      } else if (level.item != level.items_end) {
        open(*level.item++);
      } else {
        walk_.pop();
      }
    }
    return bytes;
  }

 private:
  // The fields or items of a container that are still to be looked at.
  struct Level {
    const JsonField* field;
    const JsonField* fields_end;
    const JsonValue* item;
    const JsonValue* items_end;
  };

  values::WalkStack<Level> walk_;
};

template <typename Value>
std::size_t hint_size(const Value& value) {
  HintWalk walk;
  walk.open(value);
  return walk.finish();
}

}  // namespace

std::size_t _encoded_size(const JsonValue& value) {
  return compact_size(value);
}

std::size_t _hint_size(const JsonValue& value) {
  return hint_size(value);
}
std::size_t _hint_size(const JsonObject& object) {
  return hint_size(object);
}

bool is_hint_key(const Text& key) noexcept {
  const std::string_view name = key.view();
  return std::find(HINT_KEYS.begin(), HINT_KEYS.end(), name) != HINT_KEYS.end();
}

JsonList _within_share(const JsonObject& response, JsonList steps, Keep keep) {
  if (steps.size() <= keep.steps) return steps;
  const std::size_t size = compact_size(response);
  const std::size_t hints = _hint_size(response);
  std::size_t added = compact_size(steps) + _STEPS_KEY_BYTES;
  std::size_t count = steps.size();
  while (count > keep.steps && static_cast<double>(hints + added) > hint_room(size + added)) {
    --count;
    const std::size_t comma = count > 0 ? 1 : 0;
    added -= compact_size(steps[count]) + comma;
  }
  steps.truncate(count);
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

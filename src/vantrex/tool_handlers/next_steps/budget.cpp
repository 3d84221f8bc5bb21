#include "vantrex/tool_handlers/next_steps/budget.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "vantrex/values/text_forms.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::tool_handlers::next_steps {

using values::compact_size;
using values::JsonField;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

bool is_hint_key(std::string_view key) noexcept {
  return std::find(HINT_KEYS.begin(), HINT_KEYS.end(), key) != HINT_KEYS.end();
}

// The fields or items of a container that are still to be visited.
struct Level {
  const JsonField* field;
  const JsonField* fields_end;
  const JsonValue* item;
  const JsonValue* items_end;
};
using Levels = values::WalkStack<Level>;

// Visits the hint fields of a tree. `on_hint` gets each value and the open levels. In each level the field or
// item that leads to the value is the one before the next to visit.
template <typename OnHint>
class HintWalk {
 public:
  explicit HintWalk(OnHint on_hint) : on_hint_(std::move(on_hint)) {}

  void open(const JsonObject& object) { walk_.push(object.begin(), object.end(), nullptr, nullptr); }
  void open(const JsonList& list) { walk_.push(nullptr, nullptr, list.begin(), list.end()); }
  // Opens a list or an object; false for any other value.
  bool open(const JsonValue& value) {
    if (const JsonObject* object = value.object()) {
      open(*object);
    } else if (const JsonList* list = value.list()) {
      open(*list);
    } else {
      return false;
    }
    return true;
  }

  void finish() {
    while (!walk_.empty()) {
      if (visit_rest(walk_.top())) walk_.pop();
    }
  }

 private:
  // Visits the rest of a level. Returns false if it opened a nested container instead.
  bool visit_rest(Level& level) {
    while (level.field != level.fields_end) {
      const JsonField& field = *level.field++;
      if (is_hint_key(field.key.view())) {
        on_hint_(field.value, walk_);
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
  Levels walk_;
};

template <typename Value>
std::size_t hint_size(const Value& value) {
  std::size_t bytes = 0;
  HintWalk walk([&bytes](const JsonValue& hint, const Levels&) { bytes += _encoded_size(hint); });
  walk.open(value);
  walk.finish();
  return bytes;
}

bool is_plain_name(std::string_view key) noexcept {
  const auto is_plain = [](unsigned char byte) {
    return byte == '_' || byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= 'a' && byte <= 'z');
  };
  return !key.empty() && std::all_of(key.begin(), key.end(), is_plain);
}

// The path to the current field: "results[3].note". A name that is not a plain word is quoted: ["a b"].
std::string path_text(const Levels& levels) {
  std::string path;
  const JsonValue* reached = nullptr;  // null for the root
  for (std::size_t depth = 0; depth < levels.size(); ++depth) {
    const Level& level = levels[depth];
    if (level.fields_end == nullptr) {
      const auto left = static_cast<std::size_t>(level.items_end - level.item);
      // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): the first level is an object.
      path += '[' + std::to_string(reached->list()->size() - left - 1) + ']';
      reached = level.item - 1;
      continue;
    }
    const JsonField& field = *(level.field - 1);
    const std::string_view name = field.key.view();
    if (!is_plain_name(name)) {
      path += '[' + values::compact_text(field.key) + ']';
    } else {
      if (!path.empty()) path += '.';
      path += name;
    }
    reached = &field.value;
  }
  return path;
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

void visit_hints(const JsonObject& object, const HintVisitor& visit) {
  HintWalk walk([&visit](const JsonValue& hint, const Levels& levels) { visit(path_text(levels), hint); });
  walk.open(object);
  walk.finish();
}

AddedBytes::AddedBytes(const JsonList& steps) {
  for (const JsonValue& step : steps) add(compact_size(step));
}

JsonList _within_share(const JsonObject& response, JsonList steps, Keep keep) {
  if (steps.size() <= keep.steps) return steps;
  const std::size_t hints = _hint_size(response);
  AddedBytes added(steps);

  // The room grows with the answer, so steps that fit beside nothing need no measuring. Most do.
  if (AnswerBytes{0, hints}.over_room(added.bytes()) <= 0) return steps;
  const AnswerBytes answer{compact_size(response), hints};

  std::size_t count = steps.size();
  while (count > keep.steps && answer.over_room(added.bytes()) > 0)
    added.take_back(compact_size(steps[--count]));
  steps.truncate(count);
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

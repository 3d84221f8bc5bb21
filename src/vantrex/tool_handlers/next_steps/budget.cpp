#include "vantrex/tool_handlers/next_steps/budget.h"

#include <algorithm>
#include <array>
#include <cstdint>
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
using values::Text;

namespace {

// Most keys are told from a hint's by their size and first two letters alone.
constexpr std::uint32_t initials_bit(std::string_view name) noexcept {
  const auto first = static_cast<unsigned char>(name[0]);
  const auto second = static_cast<unsigned char>(name[1]);
  return std::uint32_t{1} << ((2U * first + second) % 32);
}

// The bits of the hint keys of each size.
constexpr auto kInitialsBySize = [] {
  constexpr auto kLongest = std::max_element(HINT_KEYS.begin(), HINT_KEYS.end(), [](auto a, auto b) {
                              return a.size() < b.size();
                            })->size();
  std::array<std::uint32_t, kLongest + 1> initials{};
  for (const std::string_view key : HINT_KEYS) initials[key.size()] |= initials_bit(key);
  return initials;
}();

bool may_be_hint_key(std::string_view name) noexcept {
  return name.size() >= 2 && name.size() < kInitialsBySize.size() &&
         (kInitialsBySize[name.size()] & initials_bit(name)) != 0;
}

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
    while (!walk_.empty()) {
      if (look_through(walk_.top())) walk_.pop();
    }
    return bytes_;
  }

 private:
  // The fields or items of a container that are still to be looked at.
  struct Level {
    const JsonField* field;
    const JsonField* fields_end;
    const JsonValue* item;
    const JsonValue* items_end;
  };

  static bool is_container(const JsonValue& value) noexcept {
    return value.list() != nullptr || value.object() != nullptr;
  }

  // Goes on with a level; false when one of its values was opened instead.
  bool look_through(Level& level) {
    while (level.field != level.fields_end) {
      const JsonField& field = *level.field++;
      if (may_be_hint_key(field.key.view()) && is_hint_key(field.key)) {
        bytes_ += _encoded_size(field.value);
      } else if (is_container(field.value)) {
        open(field.value);
        return false;
      }
    }
    while (level.item != level.items_end) {
      const JsonValue& item = *level.item++;
      if (!is_container(item)) continue;
      open(item);
      return false;
    }
    return true;
  }

  std::size_t bytes_ = 0;
  values::WalkStack<Level> walk_;
};

template <typename Value>
std::size_t hint_size(const Value& value) {
  HintWalk walk;
  walk.open(value);
  return walk.finish();
}

}  // namespace

bool is_hint_key(const Text& key) noexcept {
  return std::find(HINT_KEYS.begin(), HINT_KEYS.end(), key.view()) != HINT_KEYS.end();
}

std::size_t _encoded_size(const JsonValue& value) {
  return compact_size(value);
}

std::size_t _hint_size(const JsonValue& value) {
  return hint_size(value);
}
std::size_t _hint_size(const JsonObject& object) {
  return hint_size(object);
}

JsonList _within_share(const JsonObject& response, JsonList steps, Keep keep) {
  if (steps.size() <= keep.steps) return steps;
  const std::size_t size = compact_size(response);
  const std::size_t hints = _hint_size(response);
  std::size_t added = compact_size(steps) + _STEPS_KEY_BYTES;
  std::size_t count = steps.size();
  while (count > keep.steps && bytes_over_room(hints + added, size + added) > 0) {
    --count;
    const std::size_t comma = count > 0 ? 1 : 0;
    added -= compact_size(steps[count]) + comma;
  }
  steps.truncate(count);
  return steps;
}

}  // namespace vantrex::tool_handlers::next_steps

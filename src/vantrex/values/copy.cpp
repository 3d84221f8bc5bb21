// Deep copies: one block per list or object, no recursion.
#include <new>
#include <type_traits>

#include "vantrex/values/block.h"
#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

namespace {

using detail::Values;

class CopyWalk {
 public:
  template <typename Container>
  void copy(const Container& source, Container& copy) {
    open(source, copy);
    while (!walk_.empty()) {
      Level& level = walk_.top();
      if (level.source.done()) {
        walk_.pop();
      } else {
        fill(level.source.take(), level.copy.take());
      }
    }
  }

 private:
  // A container and its copy, with the position up to which nested containers are copied.
  struct Level {
    Values<const JsonValue> source;
    Values<JsonValue> copy;
  };

  // Copies the items of `source` into `copy`, which must be empty. Nested lists and objects stay empty until
  // the walk reaches them.
  template <typename Container>
  void open(const Container& source, Container& copy) {
    if (source.empty()) return;
    detail::allocate(copy, source.size());
    auto* items = detail::ValueAccess::items(copy);
    bool has_containers = false;
    for (const auto& item : source) {
      has_containers |= place(item, items + copy.size());
      ++detail::ValueAccess::size(copy);
    }
    if constexpr (std::is_same_v<Container, JsonObject>) detail::rebuild_index(copy);
    if (has_containers) walk_.push(Values<const JsonValue>(source), Values<JsonValue>(copy));
  }

  // Constructs a copy in raw memory. Returns whether it is a container to fill.
  static bool place(const JsonField& field, JsonField* copy) noexcept {
    new (&copy->key) Text(field.key);
    return place(field.value, &copy->value);
  }
  static bool place(const JsonValue& value, JsonValue* copy) noexcept {
    if (const JsonList* list = value.list()) {
      new (copy) JsonValue(JsonList());
      return !list->empty();
    }
    if (const JsonObject* object = value.object()) {
      new (copy) JsonValue(JsonObject());
      return !object->empty();
    }
    new (copy) JsonValue(value);
    return false;
  }

  void fill(const JsonValue& source, JsonValue& copy) {
    if (const JsonList* list = source.list()) {
      open(*list, *copy.list());
    } else if (const JsonObject* object = source.object()) {
      open(*object, *copy.object());
    }
  }

  WalkStack<Level> walk_;
};

}  // namespace

JsonList::JsonList(const JsonList& other) : JsonList() {
  CopyWalk walk;
  walk.copy(other, *this);
}

JsonObject::JsonObject(const JsonObject& other) : JsonObject() {
  CopyWalk walk;
  walk.copy(other, *this);
}

}  // namespace vantrex::values

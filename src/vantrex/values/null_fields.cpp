#include "vantrex/values/null_fields.h"

#include <cstring>

#include "vantrex/values/block.h"
#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

namespace {

using detail::ValueAccess;

class DropWalk {
 public:
  void drop(JsonObject& object) {
    open(object);
    finish();
  }
  void drop(JsonValue& value) {
    open(value);
    finish();
  }

 private:
  // The remaining values of a container.
  using Level = detail::Values<JsonValue>;

  void finish() {
    while (!walk_.empty()) {
      Level& level = walk_.top();
      if (level.done()) {
        walk_.pop();
      } else {
        open(level.take());
      }
    }
  }

  void open(JsonValue& value) {
    if (JsonObject* object = value.object()) {
      open(*object);
    } else if (JsonList* list = value.list()) {
      walk_.push(Level(*list));
    }
  }

  // Removes the null fields, and pushes the object when one of its values is a container.
  void open(JsonObject& object) {
    bool has_containers = false;
    JsonField* const fields = ValueAccess::items(object);
    JsonField* kept = fields;
    for (JsonField* field = fields; field != fields + object.size(); ++field) {
      if (field->value.is_null()) {
        field->key.~Text();
        continue;
      }
      has_containers |= field->value.list() != nullptr || field->value.object() != nullptr;
      if (kept != field)
        std::memcpy(static_cast<void*>(kept), static_cast<const void*>(field), sizeof *field);
      ++kept;
    }
    if (kept != fields + object.size()) {
      ValueAccess::size(object) = static_cast<std::uint32_t>(kept - fields);
      detail::rebuild_index(fields, object.size());
    }
    if (has_containers) walk_.push(Level(object));
  }

  WalkStack<Level> walk_;
};

}  // namespace

void drop_null_fields(JsonValue& value) {
  DropWalk walk;
  walk.drop(value);
}
void drop_null_fields(JsonObject& object) {
  DropWalk walk;
  walk.drop(object);
}

}  // namespace vantrex::values

// Visits every object of a tree of values, without recursion.
#pragma once

#include <type_traits>

#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values::detail {

// Calls `visit` with each object in `root`, a JsonValue or a JsonObject, before the objects inside it.
// `visit` may change the object. It returns whether the object has values to visit: false saves their walk.
template <typename Root, typename Visit>
void visit_objects(Root& root, Visit visit) {
  WalkStack<Values<JsonValue>> walk;
  const auto open_object = [&](JsonObject& object) {
    if (visit(object)) walk.push(Values<JsonValue>(object));
  };
  const auto open = [&](JsonValue& value) {
    if (JsonObject* object = value.object()) {
      open_object(*object);
    } else if (JsonList* list = value.list()) {
      walk.push(Values<JsonValue>(*list));
    }
  };
  if constexpr (std::is_same_v<Root, JsonObject>) {
    open_object(root);
  } else {
    open(root);
  }
  while (!walk.empty()) {
    if (walk.top().done()) {
      walk.pop();
    } else {
      open(walk.top().take());
    }
  }
}

}  // namespace vantrex::values::detail

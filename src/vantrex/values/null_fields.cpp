#include "vantrex/values/null_fields.h"

#include <cstring>

#include "vantrex/values/block.h"
#include "vantrex/values/object_walk.h"

namespace vantrex::values {

namespace {

using detail::ValueAccess;

// Removes the null fields. Returns whether a value of the others is a list or an object.
bool drop_from(JsonObject& object) {
  bool has_containers = false;
  JsonField* const fields = ValueAccess::items(object);
  JsonField* kept = fields;
  for (JsonField* field = fields; field != fields + object.size(); ++field) {
    if (field->value.is_null()) {
      field->key.~Text();
      continue;
    }
    has_containers |= field->value.list() != nullptr || field->value.object() != nullptr;
    if (kept != field) std::memcpy(static_cast<void*>(kept), static_cast<const void*>(field), sizeof *field);
    ++kept;
  }
  if (kept != fields + object.size()) {
    ValueAccess::size(object) = static_cast<std::uint32_t>(kept - fields);
    detail::rebuild_index(fields, object.size());
  }
  return has_containers;
}

}  // namespace

void drop_null_fields(JsonValue& value) {
  detail::visit_objects(value, drop_from);
}
void drop_null_fields(JsonObject& object) {
  detail::visit_objects(object, drop_from);
}

}  // namespace vantrex::values

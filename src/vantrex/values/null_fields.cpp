#include "vantrex/values/null_fields.h"

#include <cstring>

#include "vantrex/values/block.h"
#include "vantrex/values/object_walk.h"

namespace vantrex::values {

namespace {

using detail::ValueAccess;

void drop_from(JsonObject& object) {
  JsonField* const fields = ValueAccess::items(object);
  JsonField* kept = fields;
  for (JsonField* field = fields; field != fields + object.size(); ++field) {
    if (field->value.is_null()) {
      field->key.~Text();
      continue;
    }
    if (kept != field) std::memcpy(static_cast<void*>(kept), static_cast<const void*>(field), sizeof *field);
    ++kept;
  }
  if (kept != fields + object.size()) {
    ValueAccess::size(object) = static_cast<std::uint32_t>(kept - fields);
    detail::rebuild_index(fields, object.size());
  }
}

}  // namespace

void drop_null_fields(JsonValue& value) {
  detail::visit_objects(value, drop_from);
}
void drop_null_fields(JsonObject& object) {
  detail::visit_objects(object, drop_from);
}

}  // namespace vantrex::values

#include <ostream>

#include "vantrex/values/json_value.h"
#include "vantrex/values/text_forms.h"

namespace vantrex::values {

std::ostream& operator<<(std::ostream& out, const JsonValue& value) {
  return out << compact_text(value);
}
std::ostream& operator<<(std::ostream& out, const JsonList& list) {
  return out << compact_text(list);
}
std::ostream& operator<<(std::ostream& out, const JsonObject& object) {
  return out << compact_text(object);
}
std::ostream& operator<<(std::ostream& out, const JsonField& field) {
  return out << compact_text(field.key) << ':' << field.value;
}

}  // namespace vantrex::values

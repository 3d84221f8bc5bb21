#include "support/table.h"

#include <utility>

#include "vantrex/adapters/nlohmann_json.h"

namespace vantrex::tests {

values::JsonValue parse(std::string_view text) {
  return adapters::from_nlohmann(nlohmann::ordered_json::parse(text));
}
values::JsonObject parse_object(std::string_view text) {
  values::JsonValue value = parse(text);
  return std::move(*value.object());
}

}  // namespace vantrex::tests

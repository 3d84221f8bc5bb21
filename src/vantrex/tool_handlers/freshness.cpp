#include "vantrex/tool_handlers/freshness.h"

#include <string>
#include <utility>

#include "vantrex/models/repository.h"

namespace vantrex::tool_handlers {

using values::JsonObject;
using values::JsonValue;
using values::Text;

JsonValue freshness_block(const models::Repository& repository) {
  const std::string indexed = repository.indexed_revision();
  const std::string present = repository.present_revision();
  if (indexed == present) return nullptr;
  return JsonObject{
      {"current", false},
      {"indexed_revision", Text::lossy(indexed)},
      {"present_revision", Text::lossy(present)},
  };
}

void add_freshness(JsonObject& answer, JsonValue block) {
  if (!block.is_null()) answer.set("freshness", std::move(block));
}

}  // namespace vantrex::tool_handlers

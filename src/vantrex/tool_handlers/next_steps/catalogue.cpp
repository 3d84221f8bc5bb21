#include "vantrex/tool_handlers/next_steps/catalogue.h"

#include <utility>

namespace vantrex::tool_handlers::next_steps {

using values::JsonObject;
using values::LossyText;
using values::TextLiteral;

JsonObject step(LossyText tool, LossyText reason, JsonObject args) {
  JsonObject made;
  made.reserve(3);
  made.append(TextLiteral("tool"), std::move(tool).take());
  made.append(TextLiteral("args"), std::move(args));
  made.append(TextLiteral("reason"), std::move(reason).take());
  return made;
}

}  // namespace vantrex::tool_handlers::next_steps

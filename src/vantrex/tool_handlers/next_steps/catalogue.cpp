#include "vantrex/tool_handlers/next_steps/catalogue.h"

#include <utility>

namespace vantrex::tool_handlers::next_steps {

using values::JsonObject;
using values::LossyText;
using values::TextLiteral;

JsonObject step(LossyText tool, LossyText reason, JsonObject args) {
  return {{TextLiteral("tool"), std::move(tool).take()},
          {TextLiteral("args"), std::move(args)},
          {TextLiteral("reason"), std::move(reason).take()}};
}

}  // namespace vantrex::tool_handlers::next_steps

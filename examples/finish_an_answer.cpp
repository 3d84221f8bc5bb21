#include <iostream>
#include <utility>

#include "vantrex/tool_handlers/next_steps.h"

using vantrex::values::JsonList, vantrex::values::JsonObject;

int main() {
  const JsonObject request{{"query", "parse"}};
  const JsonObject hit{{"fqn", "pkg.mod.parse"}, {"kind", "function"}, {"doc", nullptr}};
  JsonObject answer{{"results", JsonList::of(hit)}};
  const JsonObject finished =
      vantrex::tool_handlers::next_steps::finish_answer(std::move(answer), "search", {.arguments = &request});
  std::cout << vantrex::tool_handlers::tool_result_text(finished) << '\n';
}

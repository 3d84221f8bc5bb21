#include <fstream>
#include <iostream>
#include <string>
#include <string_view>
#include <utility>

#include "vantrex/adapters/nlohmann_json.h"
#include "vantrex/models/repository.h"
#include "vantrex/tool_handlers/next_steps.h"

namespace models = vantrex::models;
namespace tool_handlers = vantrex::tool_handlers;
namespace next_steps = vantrex::tool_handlers::next_steps;
using vantrex::values::JsonList, vantrex::values::JsonObject, vantrex::values::JsonValue;

next_steps::Catalogue catalogue_in(const std::string& path) {
  std::ifstream file(path);
  const JsonValue value = vantrex::adapters::from_nlohmann(nlohmann::ordered_json::parse(file));
  return next_steps::Catalogue::from_json(*value.object());
}

JsonObject issues(const JsonObject& request, const next_steps::Catalogue& catalogue) {
  const JsonObject first{{"number", 7}, {"label", JsonObject{{"name", "crash"}}}};
  JsonObject answer{{"issues", JsonList::of(first)}, {"page", JsonObject{{"total", 61}}}};
  return next_steps::finish_answer(std::move(answer), "issues",
                                   {.arguments = &request, .catalogue = &catalogue});
}

JsonObject unknown_label(std::string_view wanted, const models::Repository& labels,
                         const next_steps::Catalogue& catalogue) {
  JsonObject answer;
  next_steps::suggest_symbols(answer, labels, wanted, "", &catalogue);
  return next_steps::finish_answer(std::move(answer), "issues", {.catalogue = &catalogue});
}

int main() {
  const next_steps::Catalogue catalogue = catalogue_in("examples/catalogues/issues.json");
  std::cout << tool_handlers::tool_result_text(issues({{"label", "crash"}}, catalogue)) << '\n';
  models::InMemoryRepository labels;
  labels.add_symbol({.fqn = "crash", .name = "crash"});
  std::cout << tool_handlers::tool_result_text(unknown_label("crush", labels, catalogue)) << '\n';
}

#include "next_steps/miss.h"

#include <utility>

#include "vantrex/models/name_index.h"
#include "vantrex/tool_handlers/next_steps.h"

namespace next_steps_program {

namespace module = vantrex::tool_handlers::next_steps;
using vantrex::models::Repository;
using vantrex::models::SymbolView;

std::string_view text(Wanted wanted) {
  return wanted == Wanted::symbol ? "symbol" : "path";
}

std::string_view default_action(Wanted wanted) {
  return wanted == Wanted::symbol ? "detail" : "symbols";
}

bool holds(const Repository& index, Wanted wanted, std::string_view name) {
  if (const auto names = index.name_index()) {
    return wanted == Wanted::symbol ? !names->symbols_named(name).empty() : names->holds_path(name);
  }
  bool found = false;
  if (wanted == Wanted::symbol) {
    index.visit_symbols(
        [&](const SymbolView& symbol) { found |= symbol.fqn == name || symbol.name == name; });
  } else {
    index.visit_paths([&](std::string_view path) { found |= path == name; });
  }
  return found;
}

vantrex::values::JsonObject finished_miss(const Repository& index, Wanted wanted, std::string_view name,
                                          Request request) {
  const bool is_symbol = wanted == Wanted::symbol;
  request.tool = is_symbol ? "symbol" : "file";
  const auto& suggest = is_symbol ? module::suggest_symbols : module::suggest_paths;
  suggest(request.response, index, name, *request.action);
  return finished(std::move(request));
}

}  // namespace next_steps_program

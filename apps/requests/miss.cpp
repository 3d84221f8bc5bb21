#include "requests/miss.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "vantrex/models/name_index.h"
#include "vantrex/tool_handlers/next_steps.h"

namespace next_steps_requests {

using models::Repository;

namespace {

bool holds_symbol(const Repository& index, std::string_view name) {
  if (const auto names = index.name_index()) return !names->symbols_named(name).empty();
  bool found = false;
  index.visit_symbols(
      [&](const models::SymbolView& symbol) { found |= symbol.fqn == name || symbol.name == name; });
  return found;
}

bool holds_path(const Repository& index, std::string_view path) {
  if (const auto names = index.name_index()) return names->holds_path(path);
  bool found = false;
  index.visit_paths([&](std::string_view each) { found |= each == path; });
  return found;
}

struct Row {
  std::string_view name;
  std::string_view tool;
  std::string_view action;
  bool (*is_held)(const Repository& index, std::string_view name);
  decltype(&module::suggest_symbols) suggest;
};

// In the order of Wanted.
constexpr std::array<Row, 2> kRows = {{{"symbol", "symbol", "detail", holds_symbol, module::suggest_symbols},
                                       {"path", "file", "symbols", holds_path, module::suggest_paths}}};

const Row& row_of(Wanted wanted) {
  return kRows.at(static_cast<std::size_t>(wanted));
}

}  // namespace

std::optional<Wanted> wanted_named(std::string_view name) {
  const auto* found =
      std::find_if(kRows.begin(), kRows.end(), [name](const Row& row) { return row.name == name; });
  return found == kRows.end() ? std::nullopt : std::optional(static_cast<Wanted>(found - kRows.begin()));
}

std::string_view tool_of(Wanted wanted) {
  return row_of(wanted).tool;
}

std::string_view default_action(Wanted wanted) {
  return row_of(wanted).action;
}

void add_nearest(values::JsonObject& response, const Repository& index, const Miss& miss,
                 std::string_view action, const module::Catalogue* catalogue) {
  const Row& row = row_of(miss.wanted);
  if (row.is_held(index, miss.name)) throw NoMiss("no miss: the index holds this " + std::string(row.name));
  row.suggest(response, index, miss.name, action, catalogue);
}

}  // namespace next_steps_requests

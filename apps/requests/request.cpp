#include "requests/request.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

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

// What a call for something wanted asks.
struct WantedRow {
  std::string_view name;
  std::string_view tool;
  std::string_view action;  // if the call names none
  bool (*is_held)(const Repository& index, std::string_view name);
  decltype(&module::suggest_symbols) suggest;
};

// In the order of Wanted.
constexpr std::array<WantedRow, 2> kWanted = {
    {{"symbol", "symbol", "detail", holds_symbol, module::suggest_symbols},
     {"path", "file", "symbols", holds_path, module::suggest_paths}}};

// Adds the nearest names in `index` to the answer.
void add_nearest(Request& request, const Miss& miss, const Repository& index) {
  const WantedRow& row = kWanted.at(static_cast<std::size_t>(miss.wanted));
  if (row.is_held(index, miss.name)) throw NoMiss("no miss: the index holds this " + std::string(row.name));
  request.tool = row.tool;
  if (!request.action) request.action = row.action;
  row.suggest(request.response, index, miss.name, *request.action, request.catalogue);
}

module::FinishOptions options_of(Request& request) {
  return {.action = std::move(request.action),
          .arguments = request.arguments ? &*request.arguments : nullptr,
          .freshness = std::move(request.freshness),
          .serves = request.own_serves ? &*request.own_serves : request.serves,
          .catalogue = request.catalogue};
}

}  // namespace

std::optional<Wanted> wanted_named(std::string_view name) {
  const auto* found =
      std::find_if(kWanted.begin(), kWanted.end(), [name](const WantedRow& row) { return row.name == name; });
  return found == kWanted.end() ? std::nullopt : std::optional(static_cast<Wanted>(found - kWanted.begin()));
}

values::JsonObject answer_to(Request request, const Repository* index) {
  if (request.explain) return explanation_of(std::move(request)).to_dict();
  if (request.miss) add_nearest(request, *request.miss, *index);
  return module::finish_answer(std::move(request.response), request.tool, options_of(request));
}

module::Explanation explanation_of(Request request) {
  return module::explain_answer(std::move(request.response), request.tool, options_of(request));
}

}  // namespace next_steps_requests

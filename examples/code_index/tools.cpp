#include "tools.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tool_list.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/workers/name_lookup.h"

namespace code_index {

namespace next_steps = vantrex::tool_handlers::next_steps;
using vantrex::models::Repository;
using vantrex::models::Symbol;
using vantrex::models::SymbolView;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

constexpr std::size_t kMaxRows = 20;

// A symbol without a qualified name cannot be asked for, so it is left out.
std::vector<Symbol> symbols_where(const Repository& index,
                                  const std::function<bool(const SymbolView& symbol)>& wanted) {
  std::vector<Symbol> found;
  index.visit_symbols([&](const SymbolView& symbol) {
    if (symbol.fqn.empty() || !wanted(symbol)) return;
    found.push_back({std::string(symbol.fqn), std::string(symbol.name), std::string(symbol.kind),
                     std::string(symbol.file), symbol.line});
  });
  return found;
}

std::vector<std::string> all_paths(const Repository& index) {
  std::vector<std::string> paths;
  index.visit_paths([&](std::string_view path) { paths.emplace_back(path); });
  std::sort(paths.begin(), paths.end());
  return paths;
}

JsonObject row(const Symbol& symbol) {
  return vantrex::workers::SymbolCandidate{symbol}.to_dict();
}

JsonList rows(const std::vector<Symbol>& symbols) {
  JsonList list;
  for (std::size_t i = 0; i < std::min(symbols.size(), kMaxRows); ++i) list.push_back(row(symbols[i]));
  return list;
}

// Takes time proportional to the sum of both sizes; std::string_view::find may take as much as their product.
bool contains(std::string_view text, std::string_view part) {
  return ::memmem(text.data(), text.size(), part.data(), part.size()) != nullptr;
}

// Steps take the best hit from the list "symbols". The count includes the hits that are
// not listed.
JsonObject search_symbols(const Repository& index, const JsonObject& arguments) {
  const std::string_view query = *arguments["query"].string();
  std::vector<Symbol> hits =
      symbols_where(index, [&](const SymbolView& symbol) { return contains(symbol.fqn, query); });
  std::stable_partition(hits.begin(), hits.end(), [&](const Symbol& hit) { return hit.name == query; });
  return {{"query", query}, {"symbols", rows(hits)}, {"total_count", hits.size()}};
}

// A null field is left out when the answer is finished.
JsonObject symbol_detail(const Repository& index, const JsonObject& arguments) {
  const std::string_view fqn = *arguments["fqn"].string();
  const std::vector<Symbol> found =
      symbols_where(index, [&](const SymbolView& symbol) { return symbol.fqn == fqn; });
  JsonObject answer;
  if (found.empty()) return next_steps::suggest_symbols(answer, index, fqn, "detail");
  answer = row(found.front());
  answer.set("found", true);
  answer.set("overloads", found.size() > 1 ? JsonValue(found.size() - 1) : nullptr);
  return answer;
}

JsonObject file_symbols(const Repository& index, const JsonObject& arguments) {
  const std::string_view path = *arguments["path"].string();
  const std::vector<std::string> paths = all_paths(index);
  if (!std::binary_search(paths.begin(), paths.end(), path)) {
    JsonObject missed;
    return next_steps::suggest_paths(missed, index, path, "symbols");
  }
  const auto symbols = symbols_where(index, [&](const SymbolView& symbol) { return symbol.file == path; });
  return {{"found", true}, {"file", path}, {"symbols", rows(symbols)}, {"total_count", symbols.size()}};
}

JsonObject list_files(const Repository& index, const JsonObject& /*arguments*/) {
  const std::vector<std::string> paths = all_paths(index);
  return {{"files", paths}, {"total_count", paths.size()}};
}

// The counts, and the revisions that freshness compares.
JsonObject status(const Repository& index, const JsonObject& /*arguments*/) {
  std::size_t symbols = 0;
  index.visit_symbols([&](const SymbolView& /*symbol*/) { ++symbols; });
  return {{"symbol_count", symbols},
          {"file_count", all_paths(index).size()},
          {"indexed_revision", index.indexed_revision()},
          {"present_revision", index.present_revision()}};
}

struct Tool {
  std::string_view name;
  JsonObject (*run)(const Repository& index, const JsonObject& arguments);
};

constexpr std::array<Tool, 5> kTools = {{{"search", search_symbols},
                                         {"symbol", symbol_detail},
                                         {"file", file_symbols},
                                         {"files", list_files},
                                         {"status", status}}};

}  // namespace

JsonObject finished_answer(const Repository& index, std::string_view tool, const JsonObject& arguments) {
  const auto* found =
      std::find_if(kTools.begin(), kTools.end(), [&](const Tool& each) { return each.name == tool; });
  return next_steps::finish_answer(found->run(index, arguments), tool,
                                   {.action = arguments["action"].string(),
                                    .arguments = &arguments,
                                    .freshness = vantrex::tool_handlers::freshness_block(index),
                                    .serves = &served_tools()});
}

}  // namespace code_index

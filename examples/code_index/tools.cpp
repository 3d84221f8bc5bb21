#include "tools.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vantrex/tool_handlers/freshness.h"
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
using vantrex::values::Text;

namespace {

constexpr std::size_t kMostHits = 20;

std::vector<Symbol> symbols_where(const Repository& index,
                                  const std::function<bool(const SymbolView& symbol)>& wanted) {
  std::vector<Symbol> found;
  index.visit_symbols([&](const SymbolView& symbol) {
    if (!wanted(symbol)) return;
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
  for (std::size_t i = 0; i < std::min(symbols.size(), kMostHits); ++i) list.push_back(row(symbols[i]));
  return list;
}

// The hit list "symbols" is where a step finds the best hit; the count says how
// many there are beyond those listed.
JsonObject search_symbols(const Repository& index, const std::string& query) {
  std::vector<Symbol> hits = symbols_where(
      index, [&](const SymbolView& symbol) { return symbol.fqn.find(query) != std::string_view::npos; });
  std::stable_partition(hits.begin(), hits.end(), [&](const Symbol& hit) { return hit.name == query; });
  return {{"query", Text::lossy(query)}, {"symbols", rows(hits)}, {"total_count", hits.size()}};
}

// The answer's own "fqn" and "file" are what its steps go on with. A null field
// is left out when the answer is finished.
JsonObject symbol_detail(const Repository& index, const std::string& fqn) {
  const std::vector<Symbol> found =
      symbols_where(index, [&](const SymbolView& symbol) { return symbol.fqn == fqn; });
  JsonObject answer;
  if (found.empty()) return next_steps::suggest_symbols(answer, index, fqn, "detail");
  answer = row(found.front());
  answer.set("found", true);
  answer.set("overloads", found.size() > 1 ? JsonValue(found.size() - 1) : nullptr);
  return answer;
}

JsonObject file_symbols(const Repository& index, const std::string& path) {
  const std::vector<std::string> paths = all_paths(index);
  if (!std::binary_search(paths.begin(), paths.end(), path)) {
    JsonObject missed;
    return next_steps::suggest_paths(missed, index, path, "symbols");
  }
  const auto symbols = symbols_where(index, [&](const SymbolView& symbol) { return symbol.file == path; });
  return {{"found", true}, {"file", path}, {"symbols", rows(symbols)}, {"total_count", symbols.size()}};
}

JsonObject list_files(const Repository& index, const std::string& /*unused*/) {
  const std::vector<std::string> paths = all_paths(index);
  return {{"files", paths}, {"total_count", paths.size()}};
}

// One action of a tool, and the argument that it cannot do without.
struct Tool {
  std::string_view tool;
  std::string_view action;
  std::string_view argument;
  JsonObject (*run)(const Repository& index, const std::string& argument);
};

constexpr std::array<Tool, 4> kTools = {{
    {"search", "symbols", "query", search_symbols},
    {"symbol", "detail", "fqn", symbol_detail},
    {"file", "symbols", "path", file_symbols},
    {"files", "", "", list_files},
}};

std::string text_of(const JsonObject& object, std::string_view key) {
  return std::string(object[key].string().value_or(""));
}

JsonObject arguments_of(const JsonObject& call) {
  const JsonObject* arguments = call["args"].object();
  return arguments == nullptr ? JsonObject() : *arguments;
}

const Tool* find_tool(const JsonObject& call) {
  const std::string tool = text_of(call, "tool");
  const std::string action = text_of(arguments_of(call), "action");
  const auto* found = std::find_if(kTools.begin(), kTools.end(), [&](const Tool& each) {
    return each.tool == tool && each.action == action;
  });
  return found == kTools.end() ? nullptr : found;
}

// What this server has, so that its answers offer nothing else.
const next_steps::ServedTools& served_tools() {
  static const next_steps::ServedTools served = [] {
    next_steps::ServedTools tools;
    for (const Tool& each : kTools) {
      const bool has_action = !each.action.empty();
      tools.add({std::string(each.tool), has_action ? next_steps::OptionalText(each.action) : nullptr});
    }
    return tools;
  }();
  return served;
}

}  // namespace

JsonObject answer(const Repository& index, const JsonObject& call) {
  const Tool* tool = find_tool(call);
  if (tool == nullptr) throw std::invalid_argument("no tool serves the call");
  const JsonObject arguments = arguments_of(call);
  if (!tool->argument.empty() && !arguments[tool->argument].string()) {
    throw std::invalid_argument("the call lacks its \"" + std::string(tool->argument) + "\"");
  }
  return next_steps::finish_answer(tool->run(index, text_of(arguments, tool->argument)), tool->tool,
                                   {.action = tool->action,
                                    .arguments = &arguments,
                                    .freshness = vantrex::tool_handlers::freshness_block(index),
                                    .serves = &served_tools()});
}

}  // namespace code_index

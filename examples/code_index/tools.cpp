#include "tools.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tool_list.h"
#include "vantrex/models/name_index.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/workers/name_lookup.h"

namespace code_index {

namespace next_steps = vantrex::tool_handlers::next_steps;
using vantrex::models::SymbolView;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

constexpr std::size_t kMaxRows = 20;
constexpr std::size_t kMaxFiles = 100;

// The symbols that are found, of which kMaxRows are listed.
struct Hits {
  std::vector<SymbolView> listed = {};
  std::size_t count = 0;

  // A symbol without a qualified name cannot be asked for, so it is left out.
  void add(const SymbolView& symbol) {
    if (symbol.fqn.empty()) return;
    ++count;
    if (listed.size() < kMaxRows) listed.push_back(symbol);
  }
};

JsonObject row(const SymbolView& symbol) {
  return vantrex::workers::SymbolCandidate{{std::string(symbol.fqn), std::string(symbol.name),
                                            std::string(symbol.kind), std::string(symbol.file), symbol.line}}
      .to_dict();
}

JsonList rows(const std::vector<SymbolView>& symbols) {
  JsonList list;
  for (const SymbolView& symbol : symbols) list.push_back(row(symbol));
  return list;
}

// Takes time proportional to the sum of both sizes; std::string_view::find may take as much as their product.
bool contains(std::string_view text, std::string_view part) {
  return ::memmem(text.data(), text.size(), part.data(), part.size()) != nullptr;
}

// Steps take the best hit from the list "symbols". The count includes the hits that are
// not listed. A part of a name can be anywhere, so all names are looked at.
JsonObject search_symbols(const CtagsRepository& index, const JsonObject& arguments) {
  const std::string_view query = *arguments["query"].string();
  Hits exact;
  Hits others;
  for (std::size_t position = 0; position < index.symbol_count(); ++position) {
    const SymbolView symbol = index.symbol_at(position);
    if (contains(symbol.fqn, query)) (symbol.name == query ? exact : others).add(symbol);
  }
  const std::size_t count = exact.count + others.count;
  for (const SymbolView& other : others.listed) exact.add(other);
  return {{"query", query}, {"symbols", rows(exact.listed)}, {"total_count", count}};
}

// A null field is left out when the answer is finished.
JsonObject symbol_detail(const CtagsRepository& index, const JsonObject& arguments) {
  const std::string_view fqn = *arguments["fqn"].string();
  const auto names = index.name_index();
  std::vector<SymbolView> found = names->symbols_named(fqn);
  std::erase_if(found, [fqn](const SymbolView& symbol) { return symbol.fqn != fqn; });
  JsonObject answer;
  if (found.empty()) return next_steps::suggest_symbols(answer, index, fqn, "detail");
  answer = row(found.front());
  answer.set("found", true);
  answer.set("overloads", found.size() > 1 ? JsonValue(found.size() - 1) : nullptr);
  return answer;
}

JsonObject file_symbols(const CtagsRepository& index, const JsonObject& arguments) {
  const std::string_view path = *arguments["path"].string();
  const auto file = index.files().find(path);
  if (file == index.files().end()) {
    JsonObject missed;
    return next_steps::suggest_paths(missed, index, path, "symbols");
  }
  Hits hits;
  for (const std::size_t position : file->second) hits.add(index.symbol_at(position));
  return {{"found", true}, {"file", path}, {"symbols", rows(hits.listed)}, {"total_count", hits.count}};
}

JsonObject list_files(const CtagsRepository& index, const JsonObject& /*arguments*/) {
  JsonList files;
  for (const auto& file : index.files()) {
    if (files.size() == kMaxFiles) break;
    files.push_back(file.first);
  }
  const std::size_t omitted = index.files().size() - files.size();
  return {{"files", std::move(files)},
          {"total_count", index.files().size()},
          {"files_omitted", omitted > 0 ? JsonValue(omitted) : nullptr}};
}

// The counts, and the revisions that freshness compares.
JsonObject status(const CtagsRepository& index, const JsonObject& /*arguments*/) {
  return {{"symbol_count", index.symbol_count()},
          {"file_count", index.files().size()},
          {"indexed_revision", index.indexed_revision()},
          {"present_revision", index.present_revision()}};
}

struct Tool {
  std::string_view name;
  JsonObject (*run)(const CtagsRepository& index, const JsonObject& arguments);
};

constexpr std::array<Tool, 5> kTools = {{{"search", search_symbols},
                                         {"symbol", symbol_detail},
                                         {"file", file_symbols},
                                         {"files", list_files},
                                         {"status", status}}};

}  // namespace

JsonObject finished_answer(const CtagsRepository& index, std::string_view tool, const JsonObject& arguments) {
  const auto* found =
      std::find_if(kTools.begin(), kTools.end(), [&](const Tool& each) { return each.name == tool; });
  return next_steps::finish_answer(found->run(index, arguments), tool,
                                   {.action = arguments["action"].string(),
                                    .arguments = &arguments,
                                    .freshness = vantrex::tool_handlers::freshness_block(index),
                                    .serves = &served_tools()});
}

}  // namespace code_index

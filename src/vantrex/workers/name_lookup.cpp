#include "vantrex/workers/name_lookup.h"

#include <utility>

#include "vantrex/models/name_index_contents.h"
#include "vantrex/names/measure.h"
#include "vantrex/names/name_parts.h"
#include "vantrex/workers/nearest_few.h"

namespace vantrex::workers {

namespace {

struct SymbolForms {
  using View = models::SymbolView;
  using Owned = SymbolCandidate;
  static Owned own(const View& symbol) {
    return {{std::string(symbol.fqn), std::string(symbol.name), std::string(symbol.kind),
             std::string(symbol.file), symbol.line}};
  }
  static View view(const Owned& candidate) noexcept { return candidate.view(); }
  static std::string_view key(const View& symbol) noexcept { return symbol.fqn; }
};

struct PathForms {
  using View = std::string_view;
  using Owned = std::string;
  static Owned own(View path) { return std::string(path); }
  static View view(const Owned& path) noexcept { return path; }
  static std::string_view key(View path) noexcept { return path; }
};

// One lookup: ranks each candidate and keeps the best.
template <typename Forms>
struct Lookup {
  names::Measure measure;
  NearestFew<Forms> nearest;

  // Returns what the next candidates may cost.
  std::size_t offer(const typename Forms::View& candidate) {
    if (const auto rank = measure.rank(Forms::key(candidate), nearest.max_cost()))
      nearest.offer(*rank, candidate);
    return nearest.max_cost();
  }
};

}  // namespace

values::JsonObject SymbolCandidate::to_dict() const {
  using values::Text;
  values::JsonObject object;
  const auto add = [&](const values::TextLiteral& key, std::string_view text) {
    if (!text.empty()) object.set(key, Text::lossy(text));
  };
  add("fqn", fqn);
  add("name", name);
  add("kind", kind);
  add("file", file);
  if (line != 0) object.set("line", line);
  return object;
}

std::vector<SymbolCandidate> nearest_symbols(const models::Repository& repository, std::string_view wanted) {
  Lookup<SymbolForms> lookup{names::Measure(names::NameKind::symbol, wanted), {}};
  if (!lookup.measure.possible()) return {};
  if (const auto index = repository.name_index()) {
    const auto& contents = index->contents();
    contents.symbols.offer_near(
        lookup.measure, [&](std::size_t number) { return lookup.offer(contents.table->symbol(number)); });
  } else {
    repository.visit_symbols([&](const models::SymbolView& symbol) { lookup.offer(symbol); });
  }
  return std::move(lookup.nearest).take();
}

std::vector<std::string> nearest_paths(const models::Repository& repository, std::string_view wanted) {
  Lookup<PathForms> lookup{names::Measure(names::NameKind::path, wanted), {}};
  if (!lookup.measure.possible()) return {};
  if (const auto index = repository.name_index()) {
    const auto& contents = index->contents();
    contents.paths.offer_near(lookup.measure,
                              [&](std::size_t number) { return lookup.offer(contents.table->path(number)); });
  } else {
    repository.visit_paths([&](std::string_view path) { lookup.offer(path); });
  }
  return std::move(lookup.nearest).take();
}

std::string guessed_name(std::string_view wanted) {
  return std::string(names::split_last(names::NameKind::symbol, wanted).last);
}

}  // namespace vantrex::workers

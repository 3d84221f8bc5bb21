#include "vantrex/workers/name_lookup.h"

#include <utility>

#include "vantrex/models/name_index_contents.h"
#include "vantrex/names/measure.h"
#include "vantrex/names/name_parts.h"
#include "vantrex/workers/nearest_few.h"

namespace vantrex::workers {

namespace {

using Contents = models::NameIndex::Contents;

struct SymbolForms {
  using View = models::SymbolView;
  using Owned = SymbolCandidate;
  static constexpr auto kKind = names::NameKind::symbol;
  static Owned own(const View& symbol) {
    return {{std::string(symbol.fqn), std::string(symbol.name), std::string(symbol.kind),
             std::string(symbol.file), symbol.line}};
  }
  static View view(const Owned& candidate) noexcept { return candidate.view(); }
  static std::string_view key(const View& symbol) noexcept { return symbol.fqn; }
  static const names::NameColumns& columns(const Contents& index) noexcept { return index.symbols; }
  static View at(const Contents& index, std::size_t number) noexcept { return index.table->symbol(number); }
};

struct PathForms {
  using View = std::string_view;
  using Owned = std::string;
  static constexpr auto kKind = names::NameKind::path;
  static Owned own(View path) { return std::string(path); }
  static View view(const Owned& path) noexcept { return path; }
  static std::string_view key(View path) noexcept { return path; }
  static const names::NameColumns& columns(const Contents& index) noexcept { return index.paths; }
  static View at(const Contents& index, std::size_t number) noexcept { return index.table->path(number); }
};

// The nearest of the names in the index of `repository`, or without one of all that `visit` shows.
template <typename Forms, typename Visit>
std::vector<typename Forms::Owned> nearest_of(const models::Repository& repository, std::string_view wanted,
                                              Visit visit) {
  names::Measure measure(Forms::kKind, wanted);
  if (!measure.possible()) return {};
  NearestFew<Forms> nearest;
  // Returns what the next candidates may cost.
  const auto offer = [&](const typename Forms::View& candidate) {
    if (const auto rank = measure.rank(Forms::key(candidate), nearest.max_cost()))
      nearest.offer(*rank, candidate);
    return nearest.max_cost();
  };
  if (const auto index = repository.name_index()) {
    const Contents& contents = index->contents();
    Forms::columns(contents).offer_near(
        measure, [&](std::size_t number) { return offer(Forms::at(contents, number)); });
  } else {
    visit(offer);
  }
  return std::move(nearest).take();
}

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
  return nearest_of<SymbolForms>(repository, wanted,
                                 [&](const auto& offer) { repository.visit_symbols(offer); });
}

std::vector<std::string> nearest_paths(const models::Repository& repository, std::string_view wanted) {
  return nearest_of<PathForms>(repository, wanted, [&](const auto& offer) { repository.visit_paths(offer); });
}

std::string guessed_name(std::string_view wanted) {
  return std::string(names::split_last(names::NameKind::symbol, wanted).last);
}

}  // namespace vantrex::workers

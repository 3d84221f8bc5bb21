#include "vantrex/workers/name_lookup.h"

#include <optional>
#include <utility>

#include "vantrex/workers/name_parts.h"
#include "vantrex/workers/nearest_few.h"
#include "vantrex/workers/path_match.h"
#include "vantrex/workers/symbol_match.h"

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

// One lookup: ranks each visited candidate and keeps the best.
template <typename Match, typename Forms>
struct Lookup {
  Match match;
  NearestFew<Forms> nearest;

  void offer(const typename Forms::View& candidate) {
    if (const std::optional<Rank> rank = match.rank(Forms::key(candidate), nearest.worst())) {
      nearest.offer(*rank, candidate);
    }
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
  Lookup<SymbolMatch, SymbolForms> lookup{SymbolMatch(wanted), {}};
  if (!lookup.match.possible()) return {};
  repository.visit_symbols([&lookup](const models::SymbolView& symbol) { lookup.offer(symbol); });
  return std::move(lookup.nearest).take();
}

std::vector<std::string> nearest_paths(const models::Repository& repository, std::string_view wanted) {
  Lookup<PathMatch, PathForms> lookup{PathMatch(wanted), {}};
  if (!lookup.match.possible()) return {};
  repository.visit_paths([&lookup](std::string_view path) { lookup.offer(path); });
  return std::move(lookup.nearest).take();
}

std::string guessed_name(std::string_view wanted) {
  return std::string(part_symbol(wanted).last);
}

}  // namespace vantrex::workers

#include "vantrex/workers/name_lookup.h"

#include <algorithm>
#include <compare>
#include <cstddef>
#include <utility>

#include "vantrex/models/name_index_contents.h"
#include "vantrex/names/measure.h"
#include "vantrex/names/name_parts.h"

namespace vantrex::workers {

namespace {

using models::SymbolView;

constexpr std::size_t kCandidates = 5;

// One lookup: ranks the offered candidates and keeps the best, each fqn once. The result does not depend on
// the order of the offers: candidates of equal rank are ordered by their fields. A path is offered as a
// symbol that has only an fqn.
class Lookup {
 public:
  Lookup(names::NameKind kind, std::string_view wanted) : measure_(kind, wanted) {}

  const names::Measure& measure() const noexcept { return measure_; }

  // Keeps `candidate` if it is among the best. Copies it only then. Returns what the next ones may cost.
  std::size_t offer(const SymbolView& candidate) {
    if (const auto rank = measure_.rank(candidate.fqn, max_cost())) insert(*rank, candidate);
    return max_cost();
  }

  // The kept candidates, best first.
  std::vector<SymbolCandidate> take() && {
    std::vector<SymbolCandidate> candidates;
    for (Entry& entry : entries_) candidates.push_back(std::move(entry.candidate));
    return candidates;
  }

 private:
  struct Entry {
    names::Rank rank;
    SymbolCandidate candidate;
  };

  // No candidate that costs more will be kept.
  std::size_t max_cost() const noexcept {
    return entries_.size() < kCandidates ? names::kFar - 1 : entries_.back().rank.cost;
  }

  void insert(const names::Rank& rank, const SymbolView& candidate) {
    const auto goes_before = [&](const Entry& entry) {
      const std::strong_ordering order = rank <=> entry.rank;
      return order < 0 || (order == 0 && candidate < entry.candidate.view());
    };
    if (entries_.size() == kCandidates && !goes_before(entries_.back())) return;
    const auto same = std::find_if(entries_.begin(), entries_.end(),
                                   [&](const Entry& entry) { return entry.candidate.fqn == candidate.fqn; });
    if (same != entries_.end()) {
      if (!goes_before(*same)) return;
      entries_.erase(same);
    }
    const auto place = std::find_if(entries_.begin(), entries_.end(), goes_before);
    entries_.insert(place, {rank,
                            {{std::string(candidate.fqn), std::string(candidate.name),
                              std::string(candidate.kind), std::string(candidate.file), candidate.line}}});
    if (entries_.size() > kCandidates) entries_.pop_back();
  }

  names::Measure measure_;
  std::vector<Entry> entries_;
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
  Lookup lookup(names::NameKind::symbol, wanted);
  if (!lookup.measure().possible()) return {};
  if (const auto index = repository.name_index()) {
    const auto& contents = index->contents();
    contents.symbols.offer_near(
        lookup.measure(), [&](std::size_t number) { return lookup.offer(contents.table->symbol(number)); });
  } else {
    repository.visit_symbols([&](const SymbolView& symbol) { lookup.offer(symbol); });
  }
  return std::move(lookup).take();
}

std::vector<std::string> nearest_paths(const models::Repository& repository, std::string_view wanted) {
  Lookup lookup(names::NameKind::path, wanted);
  if (!lookup.measure().possible()) return {};
  if (const auto index = repository.name_index()) {
    const auto& contents = index->contents();
    contents.paths.offer_near(lookup.measure(), [&](std::size_t number) {
      return lookup.offer({.fqn = contents.table->path(number)});
    });
  } else {
    repository.visit_paths([&](std::string_view path) { lookup.offer({.fqn = path}); });
  }
  std::vector<std::string> paths;
  for (SymbolCandidate& candidate : std::move(lookup).take()) paths.push_back(std::move(candidate.fqn));
  return paths;
}

std::string guessed_name(std::string_view wanted) {
  return std::string(names::split_last(names::NameKind::symbol, wanted).last);
}

}  // namespace vantrex::workers

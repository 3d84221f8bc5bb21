#include "vantrex/workers/symbol_match.h"

#include <algorithm>
#include <cstddef>

#include "vantrex/models/ascii_case.h"

namespace vantrex::workers {

namespace {

enum SymbolTier : std::size_t { kSameName, kSameButCase, kSameButSeparators, kSameWords, kNear, kPart };

constexpr std::size_t kMinPart = 4;

}  // namespace

SymbolMatch::SymbolMatch(std::string_view wanted)
    : wanted_(wanted),
      parted_wanted_(part_symbol(wanted)),
      qualifiers_(parted_wanted_.outer, part_symbol),
      wanted_name_(parted_wanted_.last),
      edits_(wanted_name_.letters),
      part_(wanted_name_.letters) {}

std::optional<Rank> SymbolMatch::part_likeness() const noexcept {
  if (wanted_name_.letters.size() < kMinPart) return std::nullopt;
  if ((wanted_name_.letter_mask & ~name_.letter_mask) != 0) return std::nullopt;
  const std::size_t place = part_.find_in(name_.letters);
  if (place == std::u32string::npos) return std::nullopt;
  return Rank{.tier = kPart, .distance = place == 0 ? 0U : 1U};
}

std::optional<Rank> SymbolMatch::folded_likeness(const Rank* worst) const {
  const std::u32string& wanted = wanted_name_.letters;
  const std::u32string& letters = name_.letters;
  if (wanted.empty() || letters.empty()) return std::nullopt;
  if (letters == wanted) return Rank{.tier = kSameButSeparators};
  if (wanted_name_.word_hash == name_.word_hash) return Rank{.tier = kSameWords};
  if (worst != nullptr && worst->tier < kNear) return std::nullopt;
  std::size_t max = max_edits(wanted_name_, name_);
  if (worst != nullptr && worst->tier == kNear) max = std::min(max, worst->distance);
  if (min_edits(wanted_name_, name_) <= max) {
    const std::size_t edits = edits_.to(letters, max);
    if (edits <= max) return Rank{.tier = kNear, .distance = edits};
  }
  if (worst != nullptr && worst->tier < kPart) return std::nullopt;
  return part_likeness();
}

std::optional<Rank> SymbolMatch::likeness(std::string_view name, const Rank* worst) {
  if (name == parted_wanted_.last) return Rank{.tier = kSameName};
  if (models::same_but_for_case(name, parted_wanted_.last)) return Rank{.tier = kSameButCase};
  name_.assign(name);
  return folded_likeness(worst);
}

std::optional<Rank> SymbolMatch::rank(std::string_view fqn, const Rank* worst) {
  const Parted parted = part_symbol(fqn);
  if (parted.last.empty()) return std::nullopt;
  std::optional<Rank> rank = likeness(parted.last, worst);
  if (!rank || (worst != nullptr && (rank->tier > worst->tier))) return std::nullopt;
  rank->unshared = qualifiers_.missing_from(parted.outer);
  if (rank->tier == kNear) rank->lacking = lacking_letters(wanted_name_, name_);
  rank->name_gap = length_gap(parted.last, parted_wanted_.last);
  rank->length_gap = length_gap(fqn, wanted_);
  return rank;
}

}  // namespace vantrex::workers

#include "vantrex/workers/path_match.h"

#include <algorithm>

#include "vantrex/models/ascii_case.h"

namespace vantrex::workers {

namespace {

enum PathTier : std::size_t { kWholeSuffix, kSameBaseName, kSameStem, kNearStem };

// Whether one of two directories is a suffix of the other, part by part.
bool one_ends_with_other(std::string_view a, std::string_view b) noexcept {
  for (;;) {
    const Parted from_a = part_path(a);
    const Parted from_b = part_path(b);
    if (from_a.last.empty() || from_b.last.empty()) return true;
    if (!models::same_but_for_case(from_a.last, from_b.last)) return false;
    a = from_a.outer;
    b = from_b.outer;
  }
}

}  // namespace

PathMatch::BaseName::BaseName(std::string_view base) noexcept : stem(base) {
  const std::size_t dot = base.rfind('.');
  if (dot == std::string_view::npos || dot == 0) return;
  stem = base.substr(0, dot);
  extension = base.substr(dot);
}

PathMatch::PathMatch(std::string_view wanted)
    : wanted_(wanted),
      parted_wanted_(part_path(wanted)),
      wanted_base_(parted_wanted_.last),
      directories_(parted_wanted_.outer, part_path),
      wanted_stem_(wanted_base_.stem),
      edits_(wanted_stem_.letters) {}

std::optional<Rank> PathMatch::likeness(const Parted& path, const Rank* worst) {
  if (models::same_but_for_case(path.last, parted_wanted_.last)) {
    const bool is_suffix = one_ends_with_other(path.outer, parted_wanted_.outer);
    return Rank{.tier = is_suffix ? kWholeSuffix : kSameBaseName,
                .distance = path.last == parted_wanted_.last ? 0U : 1U};
  }
  const BaseName base(path.last);
  if (models::same_but_for_case(base.stem, wanted_base_.stem)) return Rank{.tier = kSameStem};
  if (worst != nullptr && worst->tier < kNearStem) return std::nullopt;
  stem_.assign(base.stem);
  std::size_t max = max_edits(wanted_stem_, stem_);
  if (worst != nullptr) max = std::min(max, worst->distance / 2);
  if (stem_.letters.empty() || min_edits(wanted_stem_, stem_) > max) return std::nullopt;
  const std::size_t edits = edits_.to(stem_.letters, max);
  if (edits > max) return std::nullopt;
  const bool same_extension = models::same_but_for_case(base.extension, wanted_base_.extension);
  return Rank{.tier = kNearStem, .distance = 2 * edits + (same_extension ? 0U : 1U)};
}

std::optional<Rank> PathMatch::rank(std::string_view path, const Rank* worst) {
  const Parted parted = part_path(path);
  if (parted.last.empty()) return std::nullopt;
  std::optional<Rank> rank = likeness(parted, worst);
  if (!rank || (worst != nullptr && rank->tier > worst->tier)) return std::nullopt;
  rank->unshared = directories_.missing_from(parted.outer);
  if (rank->tier == kNearStem) rank->lacking = lacking_letters(wanted_stem_, stem_);
  rank->name_gap = length_gap(parted.last, parted_wanted_.last);
  rank->length_gap = length_gap(path, wanted_);
  return rank;
}

}  // namespace vantrex::workers

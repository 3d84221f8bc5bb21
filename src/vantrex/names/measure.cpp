#include "vantrex/names/measure.h"

#include <algorithm>

#include "vantrex/names/ascii_case.h"

namespace vantrex::names {

namespace {

constexpr std::size_t kOtherCase = 1;
constexpr std::size_t kOtherSeparators = 2;
constexpr std::size_t kOtherOrder = 4;
constexpr std::size_t kEdit = 4;
constexpr std::size_t kPrefix = 14;
constexpr std::size_t kPart = 15;
constexpr std::size_t kOtherExtension = 3;

constexpr std::size_t kMinPart = 4;

std::size_t extension_cost(std::string_view wanted, std::string_view extension) noexcept {
  if (extension == wanted) return 0;
  return same_but_for_case(extension, wanted) ? kOtherCase : kOtherExtension;
}

}  // namespace

Measure::Measure(NameKind kind, std::string_view wanted)
    : kind_(kind),
      wanted_(wanted),
      pieces_(pieces_of(kind, wanted)),
      name_(pieces_.name),
      edits_(name_.view().letters),
      part_(name_.view().letters),
      outer_(kind, pieces_.outer) {}

Reach Measure::reach(std::size_t size, std::size_t max) const noexcept {
  const std::size_t longer = std::max(size, wanted_size());
  const std::size_t gap = longer - std::min(size, wanted_size());
  const std::size_t third = kind_ == NameKind::path && longer == 2 ? 1 : std::min(longer / 3, kMaxEdits);
  const std::size_t edits = std::min(third, max / kEdit);
  const bool has_longer = size > wanted_size() && wanted_size() >= kMinPart && max >= kPrefix;
  return {name_.view().mask, edits, gap <= edits, has_longer};
}

std::size_t Measure::letters_cost(FoldedView name, std::size_t max) const noexcept {
  const Reach reach = this->reach(name.letters.size(), max);
  std::size_t cost = kFar;
  if (reach.has_near_name(name.mask)) {
    const std::size_t edits = edits_.to(name.letters, reach.max_edits);
    if (edits <= reach.max_edits) cost = kEdit * edits;
  }
  if (cost <= kPrefix || !reach.has_longer_name(name.mask)) return cost;
  const std::size_t place = part_.find_in(name.letters);
  if (place == std::u32string_view::npos) return cost;
  return place == 0 ? kPrefix : kPart;
}

std::size_t Measure::name_cost(std::string_view name, std::size_t max) {
  if (name == pieces_.name) return 0;
  if (same_but_for_case(name, pieces_.name)) return kOtherCase;
  candidate_.assign(name);
  const FoldedView folded = candidate_.view();
  if (folded.letters.empty() || wanted_size() == 0) return kFar;
  if (folded.letters == name_.view().letters) return kOtherSeparators;
  const std::size_t cost = letters_cost(folded, max);
  return cost > kOtherOrder && candidate_.has_words_of(name_) ? kOtherOrder : cost;
}

std::optional<Rank> Measure::rank(std::string_view candidate, std::size_t max) {
  const Pieces pieces = pieces_of(kind_, candidate);
  if (pieces.name.empty()) return std::nullopt;
  Rank rank{.cost = name_cost(pieces.name, max)};
  if (rank.cost > max) return std::nullopt;
  if (rank.cost >= kOtherOrder) rank.lacking = lacking_letters(name_.view(), candidate_.view());
  rank.cost += extension_cost(pieces_.extension, pieces.extension);
  if (rank.cost > max) return std::nullopt;
  rank.cost += outer_.of(pieces.outer, max - rank.cost);
  if (rank.cost > max) return std::nullopt;
  rank.name_gap = length_gap(pieces.name, pieces_.name);
  rank.length_gap = length_gap(candidate, wanted_);
  return rank;
}

std::size_t Measure::min_cost(FoldedView name, std::size_t max) const noexcept {
  const FoldedView wanted = name_.view();
  if (name.letters == wanted.letters) return 0;
  const bool may_have_words = name_.has_several_words() && name.mask == wanted.mask &&
                              name.letters.size() == wanted.letters.size() &&
                              lacking_letters(wanted, name) == 0;
  return may_have_words ? kOtherOrder : letters_cost(name, max);
}

}  // namespace vantrex::names

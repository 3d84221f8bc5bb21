#include "vantrex/names/outer_cost.h"

#include <algorithm>
#include <utility>

#include "vantrex/names/edit_distance.h"

namespace vantrex::names {

namespace {

constexpr std::size_t kOtherSpelling = 1;
constexpr std::size_t kQualifierEdit = 2;
constexpr std::size_t kLacking = 6;
constexpr std::size_t kSurplus = 1;
constexpr std::size_t kMaxCost = kLacking + kSurplus;

}  // namespace

OuterCost::Parts::Parts(NameKind kind, std::string_view text) noexcept {
  while (count < kMax) {
    const Parted parted = split_last(kind, text);
    if (parted.last.empty()) return;
    texts[count] = count + 1 < kMax ? parted.last : text;
    ++count;
    text = parted.outer;
  }
}

OuterCost::OuterCost(NameKind kind, std::string_view wanted) : kind_(kind), wanted_(kind, wanted) {
  for (std::size_t part = 0; part < wanted_.count; ++part) folded_wanted_[part].assign(wanted_.texts[part]);
}

std::size_t OuterCost::replacement(std::size_t wanted, std::string_view candidate) {
  if (candidate == wanted_.texts[wanted]) return 0;
  folded_.assign(candidate);
  const FoldedView a = folded_wanted_[wanted].view();
  const FoldedView b = folded_.view();
  if (a.letters == b.letters) return kOtherSpelling;
  const std::size_t third = std::max(a.letters.size(), b.letters.size()) / 3;
  const std::size_t max = std::min(third, kMaxCost / kQualifierEdit);
  if (!may_be_near(a.mask, b.mask, max)) return kMaxCost;
  const std::size_t edits = edit_distance(a.letters, b.letters, max);
  return edits > max ? kMaxCost : kQualifierEdit * edits;
}

std::size_t OuterCost::of(std::string_view candidate, std::size_t max) {
  const Parts parts(kind_, candidate);
  // At n, the cost of the candidate's parts so far in place of the last n wanted parts.
  std::array<std::size_t, Parts::kMax + 1> costs;
  for (std::size_t count = 0; count <= wanted_.count; ++count) costs[count] = count * kLacking;
  for (std::size_t part = 0; part < parts.count; ++part) {
    std::size_t without_both = std::exchange(costs[0], costs[0] + kSurplus);
    std::size_t least = costs[0];
    for (std::size_t wanted = 0; wanted < wanted_.count; ++wanted) {
      std::size_t cost = std::min(costs[wanted] + kLacking, costs[wanted + 1] + kSurplus);
      if (without_both < cost) cost = std::min(cost, without_both + replacement(wanted, parts.texts[part]));
      without_both = std::exchange(costs[wanted + 1], cost);
      least = std::min(least, cost);
    }
    if (least > max) return least;
  }
  return costs[wanted_.count];
}

}  // namespace vantrex::names

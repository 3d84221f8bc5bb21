// NearestFew: the best candidates of a visit, in order.
//
// Ownership: owns copies of the kept candidates and copies nothing else. Threads: safe for concurrent reads.
#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <utility>
#include <vector>

#include "vantrex/names/measure.h"

namespace vantrex::workers {

// Keeps the best of the offered candidates, each key once. The result does not depend on the order of the
// offers: candidates of equal rank are ordered by their fields.
//
// Forms is a traits class: View, an ordered view of a candidate; Owned, its copy; own(View) and
// view(Owned), the conversions; key(View), the candidate's name.
template <typename Forms>
class NearestFew {
 public:
  using View = typename Forms::View;
  using Owned = typename Forms::Owned;

  static constexpr std::size_t kCapacity = 5;

  NearestFew() { entries_.reserve(kCapacity); }

  // No candidate that costs more will be kept.
  std::size_t max_cost() const noexcept {
    return entries_.size() < kCapacity ? names::kFar - 1 : entries_.back().rank.cost;
  }

  // Keeps `candidate` if it is among the best. Allocates only then. Strong exception guarantee.
  void offer(const names::Rank& rank, const View& candidate) {
    const auto goes_before = [&](const Entry& entry) {
      const std::strong_ordering order = rank <=> entry.rank;
      return order < 0 || (order == 0 && candidate < Forms::view(entry.item));
    };
    if (entries_.size() == kCapacity && !goes_before(entries_.back())) return;
    const auto same = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
      return Forms::key(Forms::view(entry.item)) == Forms::key(candidate);
    });
    if (same != entries_.end() && !goes_before(*same)) return;
    Entry entry{rank, Forms::own(candidate)};
    if (same != entries_.end()) {
      entries_.erase(same);
    } else if (entries_.size() == kCapacity) {
      entries_.pop_back();
    }
    entries_.insert(std::find_if(entries_.begin(), entries_.end(), goes_before), std::move(entry));
  }

  // The kept candidates, best first.
  std::vector<Owned> take() && {
    std::vector<Owned> items;
    items.reserve(entries_.size());
    for (Entry& entry : entries_) items.push_back(std::move(entry.item));
    return items;
  }

 private:
  struct Entry {
    names::Rank rank;
    Owned item;
  };

  std::vector<Entry> entries_;
};

}  // namespace vantrex::workers

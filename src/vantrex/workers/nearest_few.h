// NearestFew: the best candidates of a visit, kept in order while it goes on.
//
// Ownership: owns copies of what it keeps, and copies only what it keeps.
// Threads: like an int.
#pragma once

#include <algorithm>
#include <compare>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrex::workers {

// How near a candidate is; less is nearer. The members count in their order.
struct Rank {
  std::size_t tier = 0;        // the class of likeness, as the policy has it
  std::size_t distance = 0;    // within the class
  std::size_t unshared = 0;    // qualifiers or directories of the wanted one that the candidate lacks
  std::size_t lacking = 0;     // letters of the wanted name that the candidate lacks
  std::size_t name_gap = 0;    // by how much the names differ in length
  std::size_t length_gap = 0;  // by how much the whole texts do

  friend auto operator<=>(const Rank&, const Rank&) = default;
};

// Keeps the best candidates of those that are offered, each key once. What is
// kept does not depend on the order of the offers, since candidates of one rank
// are ordered by all that they say.
//
// Candidate names the forms that a candidate has: View, to look at and ordered,
// and Owned, to keep; own(View) and view(Owned) turn one into the other, and
// key(View) tells what a candidate is called.
template <typename Candidate>
class NearestFew {
 public:
  using View = typename Candidate::View;
  using Owned = typename Candidate::Owned;

  static constexpr std::size_t kCapacity = 5;

  NearestFew() { entries_.reserve(kCapacity + 1); }

  // The rank that nothing worse than has a chance, null while anything has.
  const Rank* worst() const noexcept { return entries_.size() < kCapacity ? nullptr : &entries_.back().rank; }

  // Keeps `candidate` if it is among the best. Allocates only then. When it
  // throws, nothing has changed.
  void offer(const Rank& rank, const View& candidate) {
    const auto goes_before = [&](const Entry& entry) {
      const std::strong_ordering order = rank <=> entry.rank;
      return order < 0 || (order == 0 && candidate < Candidate::view(entry.item));
    };
    if (entries_.size() == kCapacity && !goes_before(entries_.back())) return;
    const auto same = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
      return Candidate::key(Candidate::view(entry.item)) == Candidate::key(candidate);
    });
    if (same != entries_.end() && !goes_before(*same)) return;
    Entry entry{rank, Candidate::own(candidate)};
    if (same != entries_.end()) {
      entries_.erase(same);
    } else if (entries_.size() == kCapacity) {
      entries_.pop_back();
    }
    entries_.insert(std::find_if(entries_.begin(), entries_.end(), goes_before), std::move(entry));
  }

  // What was kept, the best first.
  std::vector<Owned> take() && {
    std::vector<Owned> items;
    items.reserve(entries_.size());
    for (Entry& entry : entries_) items.push_back(std::move(entry.item));
    return items;
  }

 private:
  struct Entry {
    Rank rank;
    Owned item;
  };

  std::vector<Entry> entries_;
};

}  // namespace vantrex::workers

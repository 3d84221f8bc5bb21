// Measure: how near other names are to a wanted one.
//
// Purpose: the one rule that orders the candidates of a lookup. The nearest has the least cost, which is the
// sum for
//
//   - its name, which is a symbol's last part or a file's name without the extension: 0 if it is equal, 1 in
//     another case, 2 with other separators (snake, camel, kebab), 4 with its words in another order, 4 for
//     each edit, 14 if it begins with the wanted name, 15 if it holds it elsewhere;
//   - its extension: 0 if it is equal, 1 in another case, otherwise 3;
//   - its qualifiers or directories: see outer_cost.h.
//
// If several costs apply to a name, the least counts. A name to which none applies is not near: one that
// needs more edits than a third of the letters of the longer name, or that holds a wanted name of less than
// four letters. The figures say what was likelier meant: a name says more than a qualifier, so an edit costs
// more in a name than in a qualifier, but not as much as one qualifier too few; a part of a name is hardly
// ever meant.
//
// Of equal costs the nearest lacks the fewest letters, since a letter that is left out or swapped is likelier
// than one particular wrong letter. Then the differences in length decide, of the names and of the whole
// texts.
//
// Ownership: borrows the wanted name. Threads: use one object on one thread only; it reuses its memory for
// each candidate.
#pragma once

#include <compare>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>

#include "vantrex/names/edit_distance.h"
#include "vantrex/names/folded_name.h"
#include "vantrex/names/name_parts.h"
#include "vantrex/names/outer_cost.h"
#include "vantrex/names/part_finder.h"

namespace vantrex::names {

// A cost that is more than any limit: the candidate is not near.
inline constexpr std::size_t kFar = std::numeric_limits<std::size_t>::max();

// How near a candidate is; less is nearer. Members are compared in order.
struct Rank {
  std::size_t cost = 0;
  std::size_t lacking = 0;     // letters that the candidate lacks
  std::size_t name_gap = 0;    // the difference in length of the names
  std::size_t length_gap = 0;  // the difference in length of the whole texts

  friend auto operator<=>(const Rank&, const Rank&) = default;
};

// Which names of one length can cost little enough, as far as their masks tell.
struct Reach {
  std::uint64_t wanted_mask;
  std::size_t max_edits;
  bool has_near;    // whether the difference in length is not more than that
  bool has_longer;  // whether names that hold the wanted one cost little enough

  bool is_empty() const noexcept { return !has_near && !has_longer; }
  bool has_near_name(std::uint64_t mask) const noexcept {
    return has_near && may_be_near(wanted_mask, mask, max_edits);
  }
  bool has_longer_name(std::uint64_t mask) const noexcept { return has_longer && (wanted_mask & ~mask) == 0; }
};

class Measure {
 public:
  // Throws std::bad_alloc.
  Measure(NameKind kind, std::string_view wanted);

  // Whether the wanted text has a name. Without one nothing is near.
  bool possible() const noexcept { return !pieces_.name.empty(); }

  // The rank of `candidate`, or nothing if it is not near or costs more than `max`. Throws std::bad_alloc,
  // for a name longer than all before it.
  std::optional<Rank> rank(std::string_view candidate, std::size_t max);

  // For an index, which knows the folded letters of its names. The number of wanted letters.
  std::size_t wanted_size() const noexcept { return name_.view().letters.size(); }
  // Which names of `size` letters can cost `max` or less.
  Reach reach(std::size_t size, std::size_t max) const noexcept;
  // The least that a candidate with these letters can cost, or any number above `max` if that is more.
  std::size_t min_cost(FoldedView name, std::size_t max) const noexcept;

 private:
  std::size_t letters_cost(FoldedView name, std::size_t max) const noexcept;
  std::size_t name_cost(std::string_view name, std::size_t max);

  NameKind kind_;
  std::string_view wanted_;
  Pieces pieces_;
  FoldedName name_;
  EditDistanceFrom edits_;
  PartFinder part_;
  OuterCost outer_;
  FoldedName candidate_;
};

}  // namespace vantrex::names

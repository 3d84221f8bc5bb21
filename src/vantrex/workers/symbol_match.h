// SymbolMatch: how near the symbols of an index are to a wanted symbol.
//
// Purpose: the ranking of symbol lookup. The last part of the name decides on the class of likeness. The
// classes, nearest first:
//   the same name, with other qualifiers;
//   the same name except for case;
//   the same name except for case and separators (snake, camel, kebab);
//   the same words in another order;
//   a name with edits, at most a third of the letters of the longer name and at most 64;
//   the wanted name as a prefix, then as another part of the name, from four letters on.
// Within a class the order is: fewer edits, more shared qualifiers, more shared letters, a smaller difference
// in length. Shared letters count because a missing letter or a swap is likelier than one particular wrong
// letter.
//
// Ownership: borrows the wanted name. Threads: use one object on one thread only; it reuses its memory for
// each candidate.
#pragma once

#include <optional>
#include <string_view>

#include "vantrex/workers/edit_distance.h"
#include "vantrex/workers/folded_name.h"
#include "vantrex/workers/name_parts.h"
#include "vantrex/workers/nearest_few.h"
#include "vantrex/workers/part_finder.h"

namespace vantrex::workers {

class SymbolMatch {
 public:
  explicit SymbolMatch(std::string_view wanted);

  // Whether the wanted symbol has a name. Without one nothing is near.
  bool possible() const noexcept { return !parted_wanted_.last.empty(); }

  // The rank of the symbol `fqn`, or nothing if it is not near. May also return nothing if it is farther than
  // `worst`, which may be null. Throws std::bad_alloc, for a name longer than all before it.
  std::optional<Rank> rank(std::string_view fqn, const Rank* worst);

 private:
  std::optional<Rank> likeness(std::string_view name, const Rank* worst);
  std::optional<Rank> folded_likeness(const Rank* worst) const;
  std::optional<Rank> part_likeness() const noexcept;

  std::string_view wanted_;
  Parted parted_wanted_;
  OuterParts qualifiers_;
  FoldedName wanted_name_;
  EditDistanceFrom edits_;
  PartFinder part_;
  FoldedName name_;
};

}  // namespace vantrex::workers

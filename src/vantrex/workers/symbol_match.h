// SymbolMatch: how near the symbols of an index are to a wanted one.
//
// Purpose: the policy of symbol lookup. What counts is the last part of a name;
// its likeness to the wanted one falls into classes, the nearest first:
//   the same name, so that only the qualifiers differ;
//   the same but for case; the same but for separators (snake, camel, kebab);
//   the same words in another order;
//   a third of the letters of the longer name edited, at most;
//   the beginning of a name, then any part of one, from four letters on.
// Within a class the smaller distance is nearer, then the candidate that shares
// more qualifiers, then the one that holds more of the wanted letters (a letter
// left out or two swapped are likelier than one particular wrong letter), then
// the one of more similar length.
//
// Ownership: borrows the wanted name. Threads: one match serves one thread,
// since it reuses its memory from candidate to candidate.
#pragma once

#include <optional>
#include <string_view>

#include "vantrex/workers/edit_distance.h"
#include "vantrex/workers/folded_name.h"
#include "vantrex/workers/name_parts.h"
#include "vantrex/workers/nearest_few.h"

namespace vantrex::workers {

class SymbolMatch {
 public:
  explicit SymbolMatch(std::string_view wanted);

  // Whether anything can be near at all: a text without a name has no likeness.
  bool possible() const noexcept { return !parted_wanted_.last.empty(); }

  // How near the symbol `fqn` is; nothing when it is not, or when it is farther
  // than `worst`, which may be null. Throws std::bad_alloc, for a name longer
  // than all before it.
  std::optional<Rank> rank(std::string_view fqn, const Rank* worst);

 private:
  std::optional<Rank> likeness(std::string_view name, const Rank* worst);
  std::optional<Rank> folded_likeness(const Rank* worst) const;

  std::string_view wanted_;
  Parted parted_wanted_;
  OuterParts qualifiers_;
  FoldedName wanted_name_;
  EditDistanceFrom edits_;
  FoldedName name_;
};

}  // namespace vantrex::workers

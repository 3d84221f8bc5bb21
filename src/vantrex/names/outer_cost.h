// OuterCost: what the differences between two lists of qualifiers, or of directories, cost.
//
// Purpose: the part of the measure that lies outside the name. The lists are aligned in order, in the way
// that costs least: 0 for an equal part, 1 for one in another case or with other separators, 2 for each edit
// in it, 6 for a part that the candidate lacks, 1 for one that only the candidate has. Qualifiers are left
// out far more often than they are made up. An edit limit of a third of the letters holds here, too, and more
// than three edits cost more than one part too few and one too many.
//
// Ownership: borrows the wanted text. Threads: use one object on one thread only; it reuses its memory for
// each candidate.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "vantrex/names/folded_name.h"
#include "vantrex/names/name_parts.h"

namespace vantrex::names {

class OuterCost {
 public:
  OuterCost(NameKind kind, std::string_view wanted);

  // The cost of `candidate`; any larger number than `max` if it is more. Throws std::bad_alloc, for a part
  // longer than all before it.
  std::size_t of(std::string_view candidate, std::size_t max);

 private:
  // In reverse order. What is left of a text with more parts counts as one part.
  struct Parts {
    static constexpr std::size_t kMax = 16;

    Parts(NameKind kind, std::string_view text) noexcept;

    std::size_t count = 0;
    std::array<std::string_view, kMax> texts;
  };

  // The cost of a candidate's part in place of a wanted one.
  std::size_t replacement(std::size_t wanted, std::string_view candidate);

  NameKind kind_;
  Parts wanted_;
  std::array<FoldedName, Parts::kMax> folded_wanted_;
  FoldedName folded_;
};

}  // namespace vantrex::names

// PathMatch: how near the paths of an index are to a wanted path.
//
// Purpose: the ranking of path lookup. The base name decides on the class of likeness. The classes, nearest
// first:
//   one path is a suffix of the other, so a foreign prefix does not matter;
//   the same base name in another directory;
//   the same stem, which is the base name without its last extension;
//   a stem with edits, at most a third of the letters of the longer stem and at most 64, separators ignored.
// Within a class the order is: fewer edits, the same extension, more shared directories, more shared letters,
// a smaller difference in length. Case does not matter, except that in the first two classes a base name in
// the same case comes first.
//
// Ownership: borrows the wanted path. Threads: use one object on one thread only; it reuses its memory for
// each candidate.
#pragma once

#include <optional>
#include <string_view>

#include "vantrex/workers/edit_distance.h"
#include "vantrex/workers/folded_name.h"
#include "vantrex/workers/name_parts.h"
#include "vantrex/workers/nearest_few.h"

namespace vantrex::workers {

class PathMatch {
 public:
  explicit PathMatch(std::string_view wanted);

  // Whether the wanted path has a base name. Without one nothing is near.
  bool possible() const noexcept { return !parted_wanted_.last.empty(); }

  // The rank of `path`, or nothing if it is not near. May also return nothing if it is farther than `worst`,
  // which may be null. Throws std::bad_alloc, for a base name longer than all before it.
  std::optional<Rank> rank(std::string_view path, const Rank* worst);

 private:
  // A base name in two pieces: "main.test.py" has the stem "main.test" and the extension ".py". A leading dot
  // does not begin an extension.
  struct BaseName {
    explicit BaseName(std::string_view base) noexcept;
    std::string_view stem;
    std::string_view extension;
  };

  std::optional<Rank> likeness(const Parted& path, const Rank* worst);

  std::string_view wanted_;
  Parted parted_wanted_;
  BaseName wanted_base_;
  OuterParts directories_;
  FoldedName wanted_stem_;
  EditDistanceFrom edits_;
  FoldedName stem_;
};

}  // namespace vantrex::workers

// PathMatch: how near the paths of an index are to a wanted one.
//
// Purpose: the policy of path lookup. What counts is the base name; the classes
// of likeness, the nearest first:
//   one path is the end of the other, so that a foreign prefix does no harm;
//   the same base name in another directory;
//   the same stem, which is the base name without its last extension;
//   a third of the letters of the longer stem edited, at most, where letters
//   are compared without separators.
// Case does not matter beyond a tie. Within a class the smaller distance is
// nearer, then the candidate with the wanted extension, then the one that
// shares more directories, then the one that holds more of the wanted letters,
// then the one of more similar length.
//
// Ownership: borrows the wanted path. Threads: one match serves one thread,
// since it reuses its memory from candidate to candidate.
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

  // Whether anything can be near at all: a path of slashes alone names no file.
  bool possible() const noexcept { return !parted_wanted_.last.empty(); }

  // How near `path` is; nothing when it is not, or when it is farther than
  // `worst`, which may be null. Throws std::bad_alloc, for a base name longer
  // than all before it.
  std::optional<Rank> rank(std::string_view path, const Rank* worst);

 private:
  // A base name in two: "main.test.py" is "main.test" and ".py". A dot in front
  // begins no extension.
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

// The parts of a qualified name and of a path.
//
// Pure functions that allocate nothing. What they return lies in the text that
// they are given.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vantrex::workers {

// The last part of a text and what stands before it, without the separator.
struct Parted {
  std::string_view outer;
  std::string_view last;
};

// Parts a symbol's name at its last ".", "::", "#", "/" or "->". Separators at
// the end and a list of arguments there belong to no part: "pkg.Thing.run()"
// ends with "run", "std::vector<int>" with "vector". Operators of C++ stay
// whole.
Parted part_symbol(std::string_view fqn) noexcept;

// Parts a path at its last "/" or "\". Separators at the end are dropped, and
// so is a part ".".
Parted part_path(std::string_view path) noexcept;

// By how many code points the texts differ in length. An ill-formed byte may
// count as one or as none.
std::size_t length_gap(std::string_view a, std::string_view b) noexcept;

// The outer parts of a wanted name or path, to be compared with those of many
// candidates. Borrows the text.
class OuterParts {
 public:
  // The function that parts a text: part_symbol or part_path.
  using Splitter = Parted (*)(std::string_view) noexcept;

  OuterParts(std::string_view outer, Splitter split) noexcept;

  // How many of the parts are none of `outer`'s. Parts are compared in order,
  // from the last one on, without regard to ASCII case.
  std::size_t missing_from(std::string_view outer) const noexcept;

 private:
  // Enough for any tree; more would only make a lookup slow.
  static constexpr std::size_t kMostParts = 16;

  Splitter split_;
  std::size_t count_ = 0;
  std::array<std::string_view, kMostParts> parts_;
};

}  // namespace vantrex::workers

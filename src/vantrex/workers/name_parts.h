// The parts of qualified names and of paths.
//
// Pure functions that do not allocate. Their results are views into their arguments.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace vantrex::workers {

// The last part of a text and the text before it, without the separator.
struct Parted {
  std::string_view outer;
  std::string_view last;
};

// Splits a symbol's name at its last ".", "::", "#", "/" or "->". Separators and an argument list at the end
// are dropped: "pkg.Thing.run()" ends with "run", "std::vector<int>" with "vector". A C++ operator is not
// split.
Parted part_symbol(std::string_view fqn) noexcept;

// Splits a path at its last "/" or "\". Separators and parts "." at the end are dropped.
Parted part_path(std::string_view path) noexcept;

// The difference in length, in code points. An ill-formed byte counts as one or as none.
std::size_t length_gap(std::string_view a, std::string_view b) noexcept;

// The outer parts of a wanted name or path, for comparison with those of many candidates. Borrows the text.
class OuterParts {
 public:
  // Splits a text: part_symbol or part_path.
  using Splitter = Parted (*)(std::string_view) noexcept;

  OuterParts(std::string_view outer, Splitter split) noexcept;

  // The number of these parts that `outer` lacks. Both are compared in order from the last part, without
  // regard to ASCII case.
  std::size_t missing_from(std::string_view outer) const noexcept;

 private:
  // Enough for any source tree; a larger limit only makes lookups slower.
  static constexpr std::size_t kMaxParts = 16;

  Splitter split_;
  std::size_t count_ = 0;
  std::array<std::string_view, kMaxParts> parts_;
};

}  // namespace vantrex::workers

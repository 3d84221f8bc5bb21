// The parts of symbols' names and of paths.
//
// Pure functions that do not allocate. Their results are views into their arguments.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vantrex::names {

enum class NameKind : std::uint8_t { symbol, path };

// The last part of a text and the text before it, without the separator.
struct Parted {
  std::string_view outer;
  std::string_view last;
};

// Splits a symbol's name at its last ".", "::", "#", "/" or "->", and a path at its last "/" or "\".
//
// Separators at the end are dropped, of a symbol's name argument lists, too, and of a path parts ".":
// "pkg.Thing.run()" ends with "run", "std::vector<int>" with "vector". A C++ operator is not split.
Parted split_last(NameKind kind, std::string_view text) noexcept;

// What is compared of a name: "pkg/mod.test.py" has the outer text "pkg", the name "mod.test" and the
// extension ".py". A symbol has no extension, and a dot at the start of a file's name does not begin one.
struct Pieces {
  std::string_view outer;
  std::string_view name;
  std::string_view extension;
};

Pieces pieces_of(NameKind kind, std::string_view text) noexcept;

// The difference in length, in code points. An ill-formed byte counts as one or as none.
std::size_t length_gap(std::string_view a, std::string_view b) noexcept;

}  // namespace vantrex::names

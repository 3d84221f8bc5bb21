// FoldedName: a name as name lookup compares it.
//
// Ownership: a value type that keeps its memory when it is assigned another
// name, so one object serves a whole visit. Threads: like an int.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantrex::workers {

struct FoldedName {
  // The code points of the name, ASCII letters in lower case, without the
  // separators "_", "-" and " ". A byte that belongs to no well-formed UTF-8
  // counts as one code point unlike all others.
  std::u32string letters;

  // The letters that occur, each hashed to one bit. One edit sets or clears at
  // most one bit on either side.
  std::uint64_t occurring = 0;

  // A fingerprint of the words of the name, whatever their order. A word ends at
  // a separator and where camel case starts another one.
  std::uint64_t words = 0;

  FoldedName() = default;
  explicit FoldedName(std::string_view name) { assign(name); }

  // Takes on `name`. Throws std::bad_alloc, when the name is longer than all
  // before it, and then is of no name in particular.
  void assign(std::string_view name);
};

// How many letters of `wanted` have no counterpart in `name`, wherever they
// stand. Letters whose bits agree may be taken for one another.
std::size_t lacking_letters(const FoldedName& wanted, const FoldedName& name) noexcept;

// How many edits at least lie between two names, from the letters alone.
std::size_t least_edits(const FoldedName& a, const FoldedName& b) noexcept;

}  // namespace vantrex::workers

// FoldedName: a name in the form that name lookup compares.
//
// Ownership: a value type. Assignment of another name reuses its memory. Threads: safe for concurrent reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vantrex::workers {

struct FoldedName {
  // The code points of the name, with ASCII letters in lower case and without separators (underscore, hyphen,
  // space). An ill-formed byte counts as one code point, different from all others.
  std::u32string letters;

  // The mask of the letters that occur, each hashed to one bit. One edit sets at most one bit and clears at
  // most one.
  std::uint64_t letter_mask = 0;

  // A hash of the words of the name in any order. A word ends at a separator and where camel case begins
  // another one.
  std::uint64_t word_hash = 0;

  FoldedName() = default;
  explicit FoldedName(std::string_view name) { assign(name); }

  // Replaces the name. Throws std::bad_alloc if `name` is longer than all names before it; the object is then
  // valid but unspecified.
  void assign(std::string_view name);
};

// The number of letters of `wanted` that `name` lacks, regardless of their positions. Letters with the same
// bit count as equal.
std::size_t lacking_letters(const FoldedName& wanted, const FoldedName& name) noexcept;

// The edits that a near name may have: a third of the letters of the longer name, at most kMaxEdits.
std::size_t max_edits(const FoldedName& a, const FoldedName& b) noexcept;

// A lower bound of the number of edits between two names, from their letters alone.
std::size_t min_edits(const FoldedName& a, const FoldedName& b) noexcept;

}  // namespace vantrex::workers

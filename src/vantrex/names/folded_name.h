// FoldedName: a name in the form that name lookup compares.
//
// Ownership: a value type. Assignment of another name reuses its memory; a FoldedView borrows. Threads: safe
// for concurrent reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantrex::names {

// The number of set bits. For the usual target, x86-64 of any age, std::popcount is a call.
constexpr std::size_t count_bits(std::uint64_t bits) noexcept {
  bits -= (bits >> 1) & 0x5555555555555555;
  bits = (bits & 0x3333333333333333) + ((bits >> 2) & 0x3333333333333333);
  bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0F;
  return (bits * 0x0101010101010101) >> 56;
}

struct FoldedView {
  // The code points of a name, with ASCII letters in lower case and without separators (underscore, hyphen,
  // space). An ill-formed byte counts as one code point, different from all others.
  std::u32string_view letters;

  // A bit for each letter that occurs and one more if it occurs again; letters are hashed to 32 pairs of
  // bits. One edit sets at most one bit and clears at most one.
  std::uint64_t mask = 0;
};

class FoldedName {
 public:
  FoldedName() = default;
  explicit FoldedName(std::string_view name) { assign(name); }

  // Replaces the name. Throws std::bad_alloc if `name` is longer than all names before it; the object is then
  // valid but unspecified.
  void assign(std::string_view name);

  FoldedView view() const noexcept { return {letters_, mask_}; }

  bool has_several_words() const noexcept { return word_ends_.size() > 1; }

  // Whether the names have the same words in any order. A word ends at a separator and where camel case
  // begins another one. Throws std::bad_alloc.
  bool has_words_of(const FoldedName& other) const;

 private:
  std::vector<std::u32string_view> sorted_words() const;

  std::u32string letters_;
  std::uint64_t mask_ = 0;
  std::vector<std::size_t> word_ends_;  // positions in letters_
};

// The number of letters of `wanted` that `name` lacks, regardless of their positions. Letters with the same
// hash count as equal.
std::size_t lacking_letters(FoldedView wanted, FoldedView name) noexcept;

// Whether two names may be within `max` edits of each other, as far as their masks tell.
constexpr bool may_be_near(std::uint64_t mask_a, std::uint64_t mask_b, std::size_t max) noexcept {
  return count_bits(mask_a & ~mask_b) <= max && count_bits(mask_b & ~mask_a) <= max;
}

}  // namespace vantrex::names

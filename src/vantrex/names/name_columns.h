// NameColumns: many names in an order in which a lookup skips most of them.
//
// Purpose: the search of an index. Names with the same folded letters form a group (or several, if hashes
// collide). The letters and the masks of the groups are columns that are sorted by length, since most names
// differ too much in length or in their letters to be near. Only the others are handed to the lookup, which
// ranks them as it does without an index.
//
// Ownership: owns its columns and keeps no text. Threads: immutable; safe for concurrent reads.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/names/folded_name.h"
#include "vantrex/names/measure.h"
#include "vantrex/names/name_parts.h"

namespace vantrex::names {

class NameColumns {
 public:
  // A text by its number. The view must stay valid until the next call.
  using Texts = std::function<std::string_view(std::size_t number)>;
  // Ranks the text with that number. Returns what the next ones may cost.
  using Offer = std::function<std::size_t(std::size_t number)>;

  // Takes the texts 0, 1, ... `count` - 1. Throws std::bad_alloc and what `texts` throws.
  NameColumns(NameKind kind, std::size_t count, const Texts& texts);

  // Offers each text that may cost as much as allowed or less, and maybe others. Nearest lengths come first,
  // so that good candidates soon rule others out. Throws what `offer` throws.
  void offer_near(const Measure& measure, const Offer& offer) const;

  // The numbers of the texts whose names have the same folded letters as `name`. Throws std::bad_alloc.
  std::vector<std::size_t> same_letters(std::string_view name) const;

 private:
  struct Search;

  // The groups whose names have `size` letters begin at `first_group`. The last lane marks the end.
  struct Lane {
    std::size_t size;
    std::size_t first_group;
  };

  std::string_view letters_of(std::size_t group) const noexcept;
  std::span<const std::size_t> numbers_of(std::size_t group) const noexcept;
  // The first lane of at least `size` letters.
  std::size_t lane_from(std::size_t size) const noexcept;
  void offer_lane(std::size_t lane, Search& search) const;

  // A column has an entry for each group. Groups of one lane are in the order of their hashes. The letters
  // and the numbers of a group are between its bound and the next one.
  std::vector<Lane> lanes_;
  std::vector<std::size_t> hashes_;
  std::vector<std::uint64_t> masks_;
  std::string letters_;
  std::vector<std::size_t> letter_bounds_{0};
  std::vector<std::size_t> numbers_;
  std::vector<std::size_t> number_bounds_{0};
};

}  // namespace vantrex::names

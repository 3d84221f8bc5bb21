// The metric of name lookup: the number of edits between two names.
//
// An edit inserts, deletes or replaces one code point, or swaps two adjacent ones. A swapped pair is not
// edited again. Measuring does not allocate and changes no object, so concurrent calls are safe.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrex::names {

// The maximum distance that is measured.
inline constexpr std::size_t kMaxEdits = 64;

// The minimum number of edits that turn `a` into `b`, or max + 1 if it is more than `max`. `max` is limited
// to kMaxEdits. Takes time proportional to `max` times the length of the shorter text.
std::size_t edit_distance(std::u32string_view a, std::u32string_view b, std::size_t max) noexcept;

// The same for one text against many. Much faster for a text of at most 64 code points. Owns a copy of the
// text.
class EditDistanceFrom {
 public:
  // Throws std::bad_alloc.
  explicit EditDistanceFrom(std::u32string_view text);

  std::size_t to(std::u32string_view other, std::size_t max) const noexcept;

 private:
  static constexpr std::size_t kMaxRows = 64;

  std::uint64_t rows_of(char32_t letter) const noexcept;
  std::size_t by_columns(std::u32string_view other, std::size_t max) const noexcept;

  std::u32string text_;
  // The positions of each letter in the text, as a mask with one bit for each.
  std::array<std::uint64_t, 128> ascii_rows_{};
  std::vector<std::pair<char32_t, std::uint64_t>> other_rows_;
};

}  // namespace vantrex::names

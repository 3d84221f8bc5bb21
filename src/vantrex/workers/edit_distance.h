// The metric of name lookup: how many edits lie between two names.
//
// An edit inserts, deletes or replaces one code point or swaps two neighbours;
// no swapped pair is edited again. Measuring takes no heap and keeps no state:
// any number of threads may measure with one object.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vantrex::workers {

// No distance above this one is measured.
inline constexpr std::size_t kMostEdits = 64;

// The least number of edits that turn `a` into `b`. Gives most + 1 when that is
// more than `most`, which is taken as kMostEdits when it is larger. Takes time
// proportional to the shorter text times `most`.
std::size_t edit_distance(std::u32string_view a, std::u32string_view b, std::size_t most) noexcept;

// The same from one text to many, and much faster when that text has 64 code
// points or fewer. Owns a copy of the text.
class EditDistanceFrom {
 public:
  // Throws std::bad_alloc.
  explicit EditDistanceFrom(std::u32string_view text);

  std::size_t to(std::u32string_view other, std::size_t most) const noexcept;

 private:
  static constexpr std::size_t kMostRows = 64;

  std::uint64_t rows_of(char32_t letter) const noexcept;
  std::size_t by_columns(std::u32string_view other, std::size_t most) const noexcept;

  std::u32string text_;
  // At which places of the text, a bit each, a letter stands.
  std::array<std::uint64_t, 128> ascii_rows_{};
  std::vector<std::pair<char32_t, std::uint64_t>> other_rows_;
};

}  // namespace vantrex::workers

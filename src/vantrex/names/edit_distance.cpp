#include "vantrex/names/edit_distance.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace vantrex::names {

namespace {

// One row of the table of distances between prefixes. Only the columns within `max` of the diagonal are kept:
// other prefixes differ in length by more than `max`. Cell `max + 1 + column - row` belongs to `column`. One
// more cell on either side means "too far".
using Band = std::array<std::uint8_t, 2 * kMaxEdits + 3>;

}  // namespace

std::size_t edit_distance(std::u32string_view a, std::u32string_view b, std::size_t max) noexcept {
  max = std::min(max, kMaxEdits);
  if (a.size() > b.size()) std::swap(a, b);
  if (b.size() - a.size() > max) return max + 1;

  const auto too_far = static_cast<std::uint8_t>(max + 1);
  Band bands[3];
  for (Band& band : bands) std::fill_n(band.begin(), 2 * max + 3, too_far);
  Band* before_last = &bands[0];
  Band* last = &bands[1];
  Band* current = &bands[2];
  const auto cell = [max](std::size_t row, std::size_t column) { return max + 1 + column - row; };
  for (std::size_t column = 0; column <= std::min(max, b.size()); ++column) {
    (*last)[cell(0, column)] = static_cast<std::uint8_t>(column);
  }

  for (std::size_t row = 1; row <= a.size(); ++row) {
    const std::size_t first = row > max ? row - max : 0;
    const std::size_t end = std::min(row + max, b.size());
    std::fill_n(current->begin(), 2 * max + 3, too_far);
    for (std::size_t column = first; column <= end; ++column) {
      const std::size_t here = cell(row, column);
      unsigned edits = std::min<unsigned>((*last)[here + 1], (*current)[here - 1]) + 1U;
      if (column > 0) {
        edits = std::min<unsigned>(edits, (*last)[here] + (a[row - 1] == b[column - 1] ? 0U : 1U));
      }
      if (row > 1 && column > 1 && a[row - 1] == b[column - 2] && a[row - 2] == b[column - 1]) {
        edits = std::min<unsigned>(edits, (*before_last)[here] + 1U);
      }
      (*current)[here] = static_cast<std::uint8_t>(std::min<unsigned>(edits, too_far));
    }
    std::swap(before_last, last);
    std::swap(last, current);
  }
  return (*last)[cell(a.size(), b.size())];
}

EditDistanceFrom::EditDistanceFrom(std::u32string_view text) : text_(text) {
  if (text.size() > kMaxRows) return;
  for (std::size_t row = 0; row < text.size(); ++row) {
    const char32_t letter = text[row];
    if (letter < ascii_rows_.size()) {
      ascii_rows_[letter] |= std::uint64_t{1} << row;
    } else {
      // One entry for each position; rows_of combines them.
      other_rows_.emplace_back(letter, std::uint64_t{1} << row);
    }
  }
}

std::uint64_t EditDistanceFrom::rows_of(char32_t letter) const noexcept {
  if (letter < ascii_rows_.size()) return ascii_rows_[letter];
  std::uint64_t rows = 0;
  for (const auto& [at, row] : other_rows_) rows |= at == letter ? row : 0;
  return rows;
}

std::size_t EditDistanceFrom::to(std::u32string_view other, std::size_t max) const noexcept {
  max = std::min(max, kMaxEdits);
  const std::size_t gap = std::max(text_.size(), other.size()) - std::min(text_.size(), other.size());
  if (gap > max) return max + 1;
  if (text_.empty()) return gap;
  return text_.size() > kMaxRows ? edit_distance(text_, other, max) : by_columns(other, max);
}

// The table of distances between prefixes of the two texts, one column for each letter of `other`. Adjacent
// cells differ by at most one. So a mask with one bit for each row tells which cells of a column are one more
// than the cell above (or to the left), and a second mask which are one less. (Hyyro, "A bit-vector algorithm
// for computing Levenshtein and Damerau edit distances", 2003.)
//
// A cell equals the one above to the left or is one more. So the distances on the diagonal that ends in the
// last cell only grow, and the first that is too large decides.
std::size_t EditDistanceFrom::by_columns(std::u32string_view other, std::size_t max) const noexcept {
  std::uint64_t more_than_above = ~std::uint64_t{0};
  std::uint64_t less_than_above = 0;
  std::uint64_t as_diagonal = 0;  // rows whose cell equals the one above to the left
  std::uint64_t equal_before = 0;
  const std::size_t columns_before = std::max(text_.size(), other.size()) - text_.size();
  const std::size_t rows_before = std::max(text_.size(), other.size()) - other.size();
  std::size_t distance = columns_before + rows_before;
  for (std::size_t column = 0; column < other.size(); ++column) {
    const std::uint64_t equal = rows_of(other[column]);
    const std::uint64_t swapped = ((~as_diagonal & equal) << 1) & equal_before;
    as_diagonal =
        (((equal & more_than_above) + more_than_above) ^ more_than_above) | equal | less_than_above | swapped;
    if (column >= columns_before) {
      distance += ~(as_diagonal >> (column - columns_before + rows_before)) & 1;
      if (distance > max) return max + 1;
    }
    const std::uint64_t more_than_left = ((less_than_above | ~(as_diagonal | more_than_above)) << 1) | 1;
    const std::uint64_t less_than_left = (as_diagonal & more_than_above) << 1;
    more_than_above = less_than_left | ~(as_diagonal | more_than_left);
    less_than_above = more_than_left & as_diagonal;
    equal_before = equal;
  }
  return distance;
}

}  // namespace vantrex::names

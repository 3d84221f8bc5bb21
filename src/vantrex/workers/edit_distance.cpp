#include "vantrex/workers/edit_distance.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace vantrex::workers {

namespace {

// One row of the table of distances between beginnings of the two texts, as far
// as it lies within `most` of the diagonal: beginnings whose lengths differ by
// more cannot be near. Cell `most + column - row` belongs to `column`; one cell
// on either side stands for all that is too far.
using Band = std::array<std::uint8_t, 2 * kMostEdits + 3>;

void drop_common_ends(std::u32string_view& a, std::u32string_view& b) noexcept {
  const auto start = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
  const auto common = static_cast<std::size_t>(start.first - a.begin());
  a.remove_prefix(common);
  b.remove_prefix(common);
  while (!a.empty() && !b.empty() && a.back() == b.back()) {
    a.remove_suffix(1);
    b.remove_suffix(1);
  }
}

}  // namespace

std::size_t edit_distance(std::u32string_view a, std::u32string_view b, std::size_t most) noexcept {
  most = std::min(most, kMostEdits);
  if (a.size() > b.size()) std::swap(a, b);
  if (b.size() - a.size() > most) return most + 1;
  drop_common_ends(a, b);
  if (a.empty()) return b.size();

  const auto too_far = static_cast<std::uint8_t>(most + 1);
  Band bands[3];
  for (Band& band : bands) std::fill_n(band.begin(), 2 * most + 3, too_far);
  Band* before_last = &bands[0];
  Band* last = &bands[1];
  Band* current = &bands[2];
  const auto cell = [most](std::size_t row, std::size_t column) { return most + 1 + column - row; };
  for (std::size_t column = 0; column <= std::min(most, b.size()); ++column) {
    (*last)[cell(0, column)] = static_cast<std::uint8_t>(column);
  }

  std::uint8_t last_least = 0;
  for (std::size_t row = 1; row <= a.size(); ++row) {
    const std::size_t first = row > most ? row - most : 0;
    const std::size_t end = std::min(row + most, b.size());
    std::fill_n(current->begin(), 2 * most + 3, too_far);
    std::uint8_t least = too_far;
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
      least = std::min(least, (*current)[here]);
    }
    if (least == too_far && last_least == too_far) return too_far;
    last_least = least;
    std::swap(before_last, last);
    std::swap(last, current);
  }
  return (*last)[cell(a.size(), b.size())];
}

}  // namespace vantrex::workers

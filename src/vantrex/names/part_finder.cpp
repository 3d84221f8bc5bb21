#include "vantrex/names/part_finder.h"

namespace vantrex::names {

PartFinder::PartFinder(std::u32string_view part) : part_(part), borders_(part.size()) {
  for (std::size_t end = 1; end < part.size(); ++end) borders_[end] = after(borders_[end - 1], part[end]);
}

std::size_t PartFinder::after(std::size_t matched, char32_t next) const noexcept {
  while (matched > 0 && part_[matched] != next) matched = borders_[matched - 1];
  return part_[matched] == next ? matched + 1 : 0;
}

std::size_t PartFinder::find_in(std::u32string_view whole) const noexcept {
  std::size_t matched = 0;
  for (std::size_t end = 0; end + part_.size() <= whole.size() + matched && matched < part_.size(); ++end) {
    matched = after(matched, whole[end]);
    if (matched == part_.size()) return end + 1 - matched;
  }
  return std::u32string_view::npos;
}

}  // namespace vantrex::names

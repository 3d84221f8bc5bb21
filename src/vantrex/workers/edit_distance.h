// The metric of name lookup: how many edits lie between two names.
//
// A pure function without heap or state; any number of threads may call it.
#pragma once

#include <cstddef>
#include <string_view>

namespace vantrex::workers {

// No distance above this one is measured.
inline constexpr std::size_t kMostEdits = 64;

// The least number of edits that turn `a` into `b`, where an edit inserts,
// deletes or replaces one code point or swaps two neighbours, and no swapped
// pair is edited again. Gives most + 1 when that is more than `most`, which is
// taken as kMostEdits when it is larger. Takes time proportional to the shorter
// text times `most`.
std::size_t edit_distance(std::u32string_view a, std::u32string_view b, std::size_t most) noexcept;

}  // namespace vantrex::workers

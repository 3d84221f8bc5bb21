#include "vantrex/names/edit_distance.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"

namespace vantrex::names {
namespace {

// The definition of the distance, by the full table.
std::size_t by_definition(const std::u32string& a, const std::u32string& b) {
  std::vector edits(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      std::size_t& edit_count = edits[i][j] = i + j;
      if (i > 0) edit_count = std::min(edit_count, edits[i - 1][j] + 1);
      if (j > 0) edit_count = std::min(edit_count, edits[i][j - 1] + 1);
      if (i > 0 && j > 0)
        edit_count = std::min(edit_count, edits[i - 1][j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1));
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        edit_count = std::min(edit_count, edits[i - 2][j - 2] + 1);
      }
    }
  }
  return edits[a.size()][b.size()];
}

TEST(EditDistance, EqualsTheDefinitionUpToTheLimit) {
  fuzz::Random random(2);
  for (int round = 0; round < 20000; ++round) {
    // Short texts, and some whose length is near that of a machine word.
    const std::size_t size = round % 20 == 0 ? 60 + random.below(10) : random.below(12);
    const std::u32string letters = round % 3 == 0 ? U"ab\u00e9\U0001F600" : U"ab";
    std::u32string a(size, 'a');
    for (char32_t& letter : a) letter = letters[random.below(letters.size())];
    std::u32string b = a;
    for (std::size_t edits = random.below(9); edits > 0; --edits) {
      const std::size_t place = random.below(b.size() + 1);
      if (random.chance(50)) b.insert(place, 1, letters[random.below(letters.size())]);
      if (random.chance(50) && place < b.size()) b.erase(place, 1);
      if (random.chance(50) && place + 1 < b.size()) std::swap(b[place], b[place + 1]);
    }
    const std::size_t exact = by_definition(a, b);
    for (const std::size_t max : {std::size_t{0}, exact - (exact > 0 ? 1 : 0), exact, random.below(200)}) {
      const std::size_t expected = std::min(exact, std::min(max, kMaxEdits) + 1);
      ASSERT_EQ(edit_distance(a, b, max), expected);
      ASSERT_EQ(EditDistanceFrom(a).to(b, max), expected);
    }
  }
}

}  // namespace
}  // namespace vantrex::names

#include "vantrex/names/part_finder.h"

#include <string>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"

namespace vantrex::names {
namespace {

TEST(PartFinder, FindsTheFirstPlace) {
  fuzz::Random random(3);
  const auto letters = [&random](std::size_t size) {
    std::u32string text(size, 'a');
    for (char32_t& letter : text) letter += random.chance(30) ? 1U : 0U;
    return text;
  };
  EXPECT_EQ(PartFinder(U"").find_in(U"a"), std::u32string_view::npos);
  for (int round = 0; round < 20000; ++round) {
    const std::u32string part = letters(1 + random.below(6));
    const std::u32string whole = letters(random.below(30));
    ASSERT_EQ(PartFinder(part).find_in(whole), whole.find(part));
  }
}

}  // namespace
}  // namespace vantrex::names

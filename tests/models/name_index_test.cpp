#include "vantrex/models/name_index.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/indexes.h"
#include "vantrex/models/repository.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::models {
namespace {

using Texts = std::vector<std::string>;

std::string random_name(fuzz::Random& random) {
  std::string name;
  for (std::size_t pieces = random.below(9); pieces > 0; --pieces) {
    name += random.pick({"read", "file", "File", "FILE", "re", "ad", "x", "1", "é", "\xc3", "\xa9",
                         "_",    "-",    "::",   ".",    "/",  "->", "(", ")", "<", ">"});
  }
  return name;
}

std::string spoilt(std::string name, fuzz::Random& random) {
  for (std::size_t edits = random.below(4); edits > 0 && !name.empty(); --edits) {
    const std::size_t place = random.below(name.size());
    if (random.chance(50)) name.erase(place, 1);
    if (random.chance(50)) name.insert(std::min(place, name.size()), 1, "fx._"[random.below(4)]);
  }
  return name;
}

// All that is known of the nearest symbols and paths.
std::string nearest(const Repository& index, std::string_view wanted) {
  std::string all;
  for (const auto& symbol : workers::nearest_symbols(index, wanted)) {
    all += symbol.fqn + '\0' + symbol.name + '\0' + std::to_string(symbol.line) + '\n';
  }
  for (const std::string& path : workers::nearest_paths(index, wanted)) all += path + '\n';
  return all;
}

TEST(NameIndex, FindsWhatAVisitFinds) {
  // Others with each repetition under --gtest_shuffle.
  fuzz::Random random(5 + static_cast<unsigned>(testing::UnitTest::GetInstance()->random_seed()));
  for (int round = 0; round < 150; ++round) {
    InMemoryRepository visited;
    Texts names;
    for (std::size_t count = random.below(60); count > 0; --count) {
      names.push_back(random.chance(20) && !names.empty() ? names.front() : random_name(random));
      visited.add_symbol({.fqn = names.back(), .name = random_name(random), .line = random.below(3)});
      visited.add_path(names.back());
    }
    InMemoryRepository indexed = visited;
    indexed.make_name_index();
    const NameIndex& index = *indexed.name_index();
    for (int miss = 0; miss < 60; ++miss) {
      const std::string wanted =
          names.empty() ? random_name(random) : spoilt(names[random.below(names.size())], random);
      ASSERT_EQ(nearest(indexed, wanted), nearest(visited, wanted)) << wanted;

      std::vector<SymbolView> named;
      visited.visit_symbols([&](const SymbolView& symbol) {
        if (symbol.fqn == wanted || symbol.name == wanted) named.push_back(symbol);
      });
      ASSERT_EQ(index.symbols_named(wanted), named) << wanted;
      ASSERT_EQ(index.holds_path(wanted), std::find(names.begin(), names.end(), wanted) != names.end())
          << wanted;
    }
  }
}

TEST(NameIndex, DoesNotChange) {
  InMemoryRepository repository = tests::small_index();
  repository.make_name_index();
  const auto index = repository.name_index();
  InMemoryRepository copy;
  copy = repository;
  EXPECT_EQ(copy.name_index(), nullptr);
  const auto* const text = index->symbols_named("pkg.b.run").at(0).fqn.data();
  repository.add_symbol({.fqn = "pkg.added"});
  repository.add_path(std::string(10000, 'x'));
  EXPECT_EQ(repository.name_index(), nullptr);
  EXPECT_EQ(index->symbols_named("pkg.b.run").at(0).fqn.data(), text);
  EXPECT_EQ(index->symbols_named("pkg.added"), std::vector<SymbolView>());
  EXPECT_EQ(tests::nearest_fqns(repository, "pkg.aded"), Texts{"pkg.added"});
}

}  // namespace
}  // namespace vantrex::models

// The share of misspelt names for which name lookup offers the right one. The names are the symbols of the
// standard libraries of C and C++, and the paths of two source trees.
#include <algorithm>
#include <cctype>
#include <fstream>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/indexes.h"
#include "vantrex/workers/name_lookup.h"
#include "vantrex/workers/name_parts.h"

namespace vantrex::workers {
namespace {

using Texts = std::vector<std::string>;
using Part = const std::string&;

Texts lines_of(const std::string& file) {
  std::ifstream stream(NEXT_STEPS_ROOT "/tests/workers/data/" + file);
  Texts lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// An index of real names. Each name is in two pieces: the last part and the text before it.
struct Corpus {
  Corpus(const Texts& lines, Parted (*part)(std::string_view) noexcept)
      : has_paths(part == part_path), index(tests::index_of(lines)) {
    for (const std::string& name : lines) {
      const std::string last(part(name).last);
      names.emplace_back(name.substr(0, name.size() - last.size()), last);
      held.insert({name, last});
    }
  }

  Texts candidates(const std::string& query) const {
    return has_paths ? nearest_paths(index, query) : tests::nearest_fqns(index, query);
  }

  bool has_paths;
  std::vector<std::pair<std::string, std::string>> names;
  std::set<std::string> held;  // the names and their last parts
  models::InMemoryRepository index;
};

// One edit within the first `size` letters of `text`.
std::string one_edit(const std::string& text, std::size_t size, fuzz::Random& random) {
  std::string edited = text;
  while (edited == text) {
    const std::size_t place = random.below(size);
    const auto letter = static_cast<char>('a' + random.below(26));
    const std::size_t kind = random.below(4);
    if (kind == 0) edited.insert(place, 1, letter);
    if (kind == 1) edited.erase(place, 1);
    if (kind == 2) edited[place] = letter;
    if (kind == 3 && place + 1 < size) std::swap(edited[place], edited[place + 1]);
  }
  return edited;
}

// Misspells a name by one edit in its last part, before a file's extension.
auto misspelt(const Corpus& corpus, fuzz::Random& random) {
  return [&](Part outer, Part last) {
    const std::size_t stem = std::min(last.rfind('.'), last.size());
    const std::string edit = stem < 4 ? "" : one_edit(last, stem, random);
    return edit.empty() || corpus.held.contains(edit) ? "" : outer + edit;
  };
}

// Misspells every third name and looks it up. `misspell` makes the query from the two pieces of a name, or
// gives "" for a name to skip. A query that the index holds is skipped as well. The shares are percentages of
// the queries: those whose first candidate, or any candidate, is the right name.
void expect_found(const char* what, const Corpus& corpus, double best_share, double five_share,
                  const std::function<std::string(Part, Part)>& misspell) {
  double asked = 0, best = 0, among_five = 0;
  for (std::size_t at = 0; at < corpus.names.size(); at += 3) {
    const auto& [outer, last] = corpus.names[at];
    const std::string query = misspell(outer, last);
    if (query.empty() || corpus.held.contains(query)) continue;
    const Texts offered = corpus.candidates(query);
    const auto place = std::find(offered.begin(), offered.end(), outer + last);
    ++asked;
    if (place == offered.end()) continue;
    ++among_five;
    if (place == offered.begin()) ++best;
  }
  EXPECT_GT(asked, 200) << what;
  EXPECT_GE(100 * best / asked, best_share) << what;
  EXPECT_GE(100 * among_five / asked, five_share) << what;
}

TEST(Quality, Symbols) {
  fuzz::Random random(std::mt19937(7), fuzz::Domain::any);
  const Corpus symbols(lines_of("symbols.txt"), part_symbol);
  expect_found("one edit", symbols, 98, 100, misspelt(symbols, random));
  expect_found("case", symbols, 99, 99, [](Part outer, std::string last) {
    for (char& c : last) c = static_cast<char>(std::islower(c) != 0 ? std::toupper(c) : std::tolower(c));
    return outer + last;
  });
  expect_found("word order", symbols, 98, 99, [](Part outer, Part last) {
    const std::size_t word = last.find('_') + 1;
    return word < 2 || word == last.size() ? "" : outer + last.substr(word) + "_" + last.substr(0, word - 1);
  });
  expect_found("wrong qualifier", symbols, 95, 99,
               [](Part outer, Part last) { return outer.empty() ? "" : "acme::" + outer + last; });

  // Of random letters, and names of two words from other fields, at most 1 % may have candidates.
  const Texts foreign = lines_of("foreign_words.txt");
  Texts answered;
  for (int round = 0; round < 750; ++round) {
    std::string letters(6 + random.below(10), ' ');
    for (char& letter : letters) letter = static_cast<char>('a' + random.below(26));
    const std::string words =
        foreign[random.below(foreign.size())] + "_" + foreign[random.below(foreign.size())];
    for (const std::string& query : {letters, words})
      if (!symbols.candidates(query).empty()) answered.push_back(query);
  }
  EXPECT_LE(answered.size(), 15U) << testing::PrintToString(answered);
}

TEST(Quality, Paths) {
  fuzz::Random random(std::mt19937(7), fuzz::Domain::any);
  const Corpus paths(lines_of("paths.txt"), part_path);
  expect_found("one edit of a stem", paths, 98, 100, misspelt(paths, random));
  expect_found("wrong directory", paths, 85, 95, [](Part outer, Part last) {
    return outer.substr(0, outer.rfind('/', outer.size() - 2) + 1) + "elsewhere/" + last;
  });
}

}  // namespace
}  // namespace vantrex::workers

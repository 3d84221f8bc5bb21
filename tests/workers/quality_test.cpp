// The share of misspelt names for which name lookup offers the right one first. The names are the symbols of
// the standard libraries of C and C++, and the paths of two source trees. scripts/quality does the same with
// the names of a whole machine.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/support/random_tree.h"
#include "support/indexes.h"
#include "vantrex/workers/name_lookup.h"

namespace vantrex::workers {
namespace {

using fuzz::Random;
using Texts = std::vector<std::string>;

Texts lines_of(const std::string& file) {
  std::ifstream stream(NEXT_STEPS_ROOT "/tests/workers/data/" + file);
  Texts lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// One slip of a hand before the file extension: a letter dropped, doubled, swapped with the next one, or the
// one beside it on the keyboard. Clears a text of less than four letters.
void slip(std::string& text, Random& random) {
  constexpr std::string_view kKeys = "qwertyuiop asdfghjkl zxcvbnm";
  const std::size_t size = std::min(text.rfind('.'), text.size());
  if (size < 4) return text.clear();
  const std::string right = text;
  while (text == right) {
    const std::size_t place = random.below(size);
    const std::size_t key = kKeys.find(static_cast<char>(std::tolower(text[place])));
    const std::size_t kind = random.below(4);
    if (kind == 0) text.erase(place, 1);
    if (kind == 1) text.insert(place, 1, text[place]);
    if (kind == 2 && place + 1 < size) std::swap(text[place], text[place + 1]);
    if (kind == 3 && key != std::string_view::npos && key > 0 && kKeys[key - 1] != ' ')
      text[place] = kKeys[key - 1];
  }
}

void slip_outside(Texts& parts, Random& random) {
  slip(parts[random.below(parts.size() - 1)], random);
}

void drop_inner(Texts& parts, Random& random) {
  parts.erase(parts.end() - 2 - static_cast<int>(random.below(parts.size() - 2)));
}

// "push_back" becomes "pushBack"; clears a name without an underscore inside.
void restyle(std::string& name) {
  const std::size_t place = name.find('_', 1);
  if (place >= name.size() - 1) return name.clear();
  name.erase(place, 1);
  name[place] = static_cast<char>(std::toupper(name[place]));
}

// A kind of misspelling: the fewest parts that a name must have, the least share that must be found first, in
// percent, and what becomes of the parts. A part that becomes empty has the name skipped.
struct Kind {
  const char* what;
  std::size_t fewest;
  double share;
  void (*spoil)(Texts& parts, Random& random);
};

// An index of real names. A name is in parts, with a separator between them.
struct Corpus {
  Corpus(const char* file, std::string between)
      : lines(lines_of(file)), separator(std::move(between)), index(tests::index_of(lines)) {
    index.make_name_index();
    for (const std::string& line : lines) {
      held.insert(line);
      held.insert(parts_of(line).back());
    }
  }

  Texts parts_of(const std::string& name) const {
    Texts parts;
    std::size_t start = 0;
    for (std::size_t end = 0; end != std::string::npos; start = end + separator.size()) {
      end = name.find(separator, start);
      parts.push_back(name.substr(start, end == std::string::npos ? end : end - start));
    }
    return parts;
  }

  Texts candidates(const std::string& query) const {
    return separator == "/" ? nearest_paths(index, query) : tests::nearest_fqns(index, query);
  }

  void expect_first(const Kind& kind) const {
    Random random(std::mt19937(7), fuzz::Domain::any);
    double asked = 0, first = 0;
    for (std::size_t at = 0; at < lines.size(); at += 2) {
      Texts parts = parts_of(lines[at]);
      if (parts.size() < kind.fewest) continue;
      kind.spoil(parts, random);
      std::string query;
      for (const std::string& part : parts) query += (&part == &parts.front() ? "" : separator) + part;
      if (held.contains(query) || std::count(parts.begin(), parts.end(), "") > 0) continue;
      const Texts offered = candidates(query);
      ++asked;
      if (!offered.empty() && offered.front() == lines[at]) ++first;
    }
    EXPECT_GT(asked, 100) << kind.what;
    EXPECT_GE(100 * first / asked, kind.share) << kind.what;
  }

  Texts lines;
  std::string separator;
  std::set<std::string> held;  // the names and their last parts
  models::InMemoryRepository index;
};

void slip_in_name(Texts& parts, Random& random) {
  slip(parts.back(), random);
}

TEST(Quality, Symbols) {
  const Corpus symbols("symbols.txt", "::");
  for (const Kind& kind : {
           Kind{"name", 1, 98, slip_in_name},
           Kind{"qualifier", 3, 98, slip_outside},
           Kind{"both", 3, 97,
                [](Texts&parts, Random&random) { slip_outside(parts, random), slip_in_name(parts, random); }},
           Kind{"outer qualifiers left out", 3, 97,
                [](Texts&parts, Random&random) {
                  parts.erase(parts.begin(), parts.end() - 2), slip_in_name(parts, random);
                }},
           Kind{"inner qualifier left out", 3, 37,
                [](Texts&parts, Random&random) { drop_inner(parts, random), slip_in_name(parts, random); }},
           Kind{"bare name", 1, 67,
                [](Texts&parts, Random&random) {
                  parts.erase(parts.begin(), parts.end() - 1), slip_in_name(parts, random);
                }},
           Kind{"style", 1, 99, [](Texts&parts, Random& /*random*/) { restyle(parts.back()); }},
           Kind{"case", 1, 99,
                [](Texts&parts, Random& /*random*/) {
                  for (char& c : parts.back())
                    c = static_cast<char>(std::islower(c) != 0 ? std::toupper(c) : std::tolower(c));
                }},
           Kind{"word order", 1, 98,
                [](Texts&parts, Random& /*random*/) {
                  const std::size_t word = parts.back().find('_') + 1;
                  if (word < 2 || word == parts.back().size()) return parts.back().clear();
                  parts.back() = parts.back().substr(word) + "_" + parts.back().substr(0, word - 1);
                }},
       }) {
    symbols.expect_first(kind);
  }

  // Of random letters, and names of two words from other fields, at most 1 % may have candidates.
  Random random(std::mt19937(7), fuzz::Domain::any);
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
  const Corpus paths("paths.txt", "/");
  for (const Kind& kind : {
           Kind{"name", 2, 99, slip_in_name},
           Kind{"directory", 2, 99, slip_outside},
           Kind{"both", 2, 97,
                [](Texts&parts, Random&random) { slip_outside(parts, random), slip_in_name(parts, random); }},
           Kind{"directory left out", 3, 78,
                [](Texts&parts, Random&random) { drop_inner(parts, random), slip_in_name(parts, random); }},
           Kind{"extension", 2, 97,
                [](Texts&parts, Random& /*random*/) {
                  parts.back() = parts.back().substr(0, parts.back().rfind('.')) + ".rs";
                }},
       }) {
    paths.expect_first(kind);
  }
}

}  // namespace
}  // namespace vantrex::workers

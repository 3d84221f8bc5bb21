// Name lookup over arbitrary bytes. The first line is the wanted name, the others are the names in the index.
// The result has at most five names of the index, each once. Each shares a byte with the wanted name, ASCII
// case ignored. Neither the order of the index nor a name index matters.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/support/check.h"
#include "tests/support/indexes.h"
#include "vantrex/models/name_index.h"
#include "vantrex/names/ascii_case.h"
#include "vantrex/workers/name_lookup.h"

using vantrex::fuzz::check;
using vantrex::tests::index_of;
using vantrex::tests::nearest_fqns;
using vantrex::workers::nearest_paths;

namespace {

bool share_a_byte(std::string_view a, std::string_view b) {
  const auto same = [](char x, char y) { return vantrex::names::lower(x) == vantrex::names::lower(y); };
  return std::find_first_of(a.begin(), a.end(), b.begin(), b.end(), same) != a.end();
}

void check_near(const std::vector<std::string>& near, const std::string& wanted,
                const std::vector<std::string>& names) {
  check(near.size() <= 5, "there are at most five");
  check(std::set<std::string>(near.begin(), near.end()).size() == near.size(), "each is given once");
  for (const std::string& name : near) {
    check(std::find(names.begin(), names.end(), name) != names.end(), "each is in the index");
    check(share_a_byte(name, wanted), "each shares a byte with the wanted name");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::istringstream lines(std::string(reinterpret_cast<const char*>(data), size));
  std::string wanted;
  std::getline(lines, wanted);
  std::vector<std::string> names;
  for (std::string line; std::getline(lines, line);) names.push_back(line);
  auto index = index_of(names);
  const auto symbols = nearest_fqns(index, wanted);
  const auto paths = nearest_paths(index, wanted);
  check_near(symbols, wanted, names);
  check_near(paths, wanted, names);

  index.make_name_index();
  check(nearest_fqns(index, wanted) == symbols, "a name index finds the same symbols");
  check(nearest_paths(index, wanted) == paths, "a name index finds the same paths");
  const bool is_held = std::find(names.begin(), names.end(), wanted) != names.end();
  check(index.name_index()->holds_path(wanted) == is_held, "a name index holds the paths");
  const auto named = index.name_index()->symbols_named(wanted);
  // The symbols have no name, so the empty one finds all of them.
  check(wanted.empty() || named.empty() != is_held, "a name index finds a symbol by its fqn");

  std::reverse(names.begin(), names.end());
  const auto reversed = index_of(names);
  check(nearest_fqns(reversed, wanted) == symbols, "the order of symbols in the index does not matter");
  check(nearest_paths(reversed, wanted) == paths, "the order of paths in the index does not matter");
  return 0;
}

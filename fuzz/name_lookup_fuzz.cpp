// Name lookup over any bytes: the first line is wanted, the others are what the
// index holds. At most five of those are given, each once, in an order that
// does not depend on the index's, and nothing that shares no letter with what
// is wanted.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/support/check.h"
#include "vantrex/models/repository.h"
#include "vantrex/workers/name_lookup.h"

using vantrex::fuzz::check;
using vantrex::models::InMemoryRepository;

namespace {

std::vector<std::string> lines_of(std::string_view text) {
  std::vector<std::string> lines(1);
  for (const char byte : text) {
    if (byte == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += byte;
    }
  }
  return lines;
}

InMemoryRepository index_of(const std::vector<std::string>& names) {
  InMemoryRepository index;
  for (const std::string& name : names) {
    index.add_symbol({.fqn = name, .name = {}, .kind = {}, .file = {}, .line = 0});
    index.add_path(name);
  }
  return index;
}

std::vector<std::string> symbols_near(const InMemoryRepository& index, const std::string& wanted) {
  std::vector<std::string> names;
  for (const auto& candidate : vantrex::workers::nearest_symbols(index, wanted))
    names.push_back(candidate.fqn);
  return names;
}

char folded(char byte) {
  return 'A' <= byte && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

bool share_a_byte(std::string_view a, std::string_view b) {
  return std::any_of(a.begin(), a.end(), [b](char byte) {
    return std::any_of(b.begin(), b.end(), [byte](char other) { return folded(byte) == folded(other); });
  });
}

void check_near(const std::vector<std::string>& near, const std::string& wanted,
                const std::vector<std::string>& names) {
  check(near.size() <= 5, "there are at most five");
  check(std::set<std::string>(near.begin(), near.end()).size() == near.size(), "each is given once");
  for (const std::string& name : near) {
    check(std::find(names.begin(), names.end(), name) != names.end(), "the index holds what is given");
    check(share_a_byte(name, wanted), "strangers are not given");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<std::string> names = lines_of({reinterpret_cast<const char*>(data), size});
  const std::string wanted = names.front();
  names.erase(names.begin());
  const InMemoryRepository index = index_of(names);
  const auto symbols = symbols_near(index, wanted);
  const auto paths = vantrex::workers::nearest_paths(index, wanted);
  check_near(symbols, wanted, names);
  check_near(paths, wanted, names);

  std::reverse(names.begin(), names.end());
  const InMemoryRepository reversed = index_of(names);
  check(symbols_near(reversed, wanted) == symbols, "the index's order of symbols does not matter");
  check(vantrex::workers::nearest_paths(reversed, wanted) == paths, "nor does that of paths");
  return 0;
}

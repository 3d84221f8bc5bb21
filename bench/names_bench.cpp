// Benchmarks of name lookup by the size of the index: with a name index, by a visit, and the edit distance to
// each name alone, which is what a lookup without further thought takes; the making of a name index.
//
// Names are lookup/JOB/CONTENDER. The counter `items` is the number of misses of one run. Alike names are all
// near each other, which is the slowest case.
#include <array>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "memory.h"
#include "register.h"
#include "vantrex/models/name_index.h"
#include "vantrex/models/repository.h"
#include "vantrex/names/edit_distance.h"
#include "vantrex/names/folded_name.h"
#include "vantrex/names/name_parts.h"
#include "vantrex/workers/name_lookup.h"
#include "words.h"

namespace vantrex::bench {

namespace {

using models::InMemoryRepository;

enum class Names : bool { real, alike };

constexpr std::array<std::string_view, 6> kWanted = {
    "index.flush_segmnt7",       "node.ReaderCache.load_cache12", "resolve_module_scope_99",
    "cache.collect_grph_edge31", "graph.option.kubernetes",       "requst_handler_1500000"};

InMemoryRepository repository_of(std::size_t size, Names names) {
  InMemoryRepository repository;
  Random random(20);
  for (std::size_t at = 0; at < size; ++at) {
    const std::string name =
        names == Names::alike
            ? "request_handler_" + std::to_string(1'000'000 + at * 7919 % size)
            : joined({function_name(random), "_", noun(random), std::to_string(random.below(20))});
    repository.add_symbol({joined({noun(random), ".", class_name(random), ".", name}), name, "function",
                           "acme/app.py", at + 1});
  }
  return repository;
}

// The repository of these names, with and without an index. Each is made once.
const InMemoryRepository& kept_repository(std::size_t size, Names names, bool indexed) {
  static std::map<std::pair<std::size_t, Names>, std::array<InMemoryRepository, 2>> kept;
  auto [place, is_new] = kept.try_emplace({size, names});
  if (is_new) {
    place->second[0] = repository_of(size, names);
    place->second[1] = place->second[0];
    place->second[1].make_name_index();
  }
  return place->second[indexed ? 1 : 0];
}

void look_up(benchmark::State& state, std::size_t size, Names names, bool indexed) {
  const InMemoryRepository& repository = kept_repository(size, names, indexed);
  state.counters["items"] = kWanted.size();
  for (auto _ : state) {
    for (const std::string_view wanted : kWanted)
      benchmark::DoNotOptimize(workers::nearest_symbols(repository, wanted));
  }
}

void make_index(benchmark::State& state, std::size_t size) {
  const InMemoryRepository& repository = kept_repository(size, Names::real, false);
  for (auto _ : state) benchmark::DoNotOptimize(models::NameIndex(repository));
}

names::FoldedName folded(std::string_view fqn) {
  return names::FoldedName(names::pieces_of(names::NameKind::symbol, fqn).name);
}

void measure_all(benchmark::State& state, std::size_t size) {
  std::set<std::u32string> different;
  kept_repository(size, Names::real, false).visit_symbols([&](const models::SymbolView& symbol) {
    different.emplace(folded(symbol.fqn).view().letters);
  });
  const std::vector<std::u32string> names(different.begin(), different.end());
  state.counters["items"] = kWanted.size();
  state.counters["names"] = static_cast<double>(names.size());
  for (auto _ : state) {
    for (const std::string_view wanted : kWanted) {
      const names::EditDistanceFrom edits(folded(wanted).view().letters);
      for (const std::u32string& name : names) benchmark::DoNotOptimize(edits.to(name, names::kMaxEdits));
    }
  }
}

void add_all() {
  for (const std::size_t size : {10'000UL, 130'000UL, 1'600'000UL}) {
    const std::string in = "lookup/in " + std::to_string(size);
    add(in + " names/next_steps", look_up, size, Names::real, true);
    add(in + " alike names/next_steps", look_up, size, Names::alike, true);
    add(in + " names, by a visit/next_steps", look_up, size, Names::real, false);
    add(in + " names, the distances alone/next_steps", measure_all, size);
    add("lookup/index of " + std::to_string(size) + " names/next_steps", make_index, size);
  }
}

}  // namespace

}  // namespace vantrex::bench

int main(int argc, char** argv) {
  vantrex::bench::keep_freed_memory();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  vantrex::bench::add_all();
  benchmark::RunSpecifiedBenchmarks();
}

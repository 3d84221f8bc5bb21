// How long a lookup of a name or a path takes, by the size of the index.
//
// The indexes are made of words, like those of real trees; "alike" is the hard
// case in which every name of the index is near the wanted one. Names are
// lookup/SHAPE/next_steps; the counter `items` says how many queries a round has.
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "vantrex/models/repository.h"
#include "vantrex/workers/name_lookup.h"
#include "words.h"

namespace {

using vantrex::bench::joined;
using vantrex::models::InMemoryRepository;

InMemoryRepository index_of_words(std::size_t size) {
  InMemoryRepository index;
  vantrex::bench::Random random(20);
  for (std::size_t count = 0; count < size; ++count) {
    const std::string name = function_name(random) + std::to_string(random.below(100));
    const std::string file =
        joined({"src/acme/", noun(random), "/", noun(random), "_", noun(random), ".py"}) +
        std::to_string(random.below(1000));
    index.add_symbol({joined({noun(random), ".", noun(random), ".", class_name(random), ".", name}), name,
                      "function", file, count + 1});
    index.add_path(file);
  }
  return index;
}

InMemoryRepository index_of_alike_names(std::size_t size) {
  InMemoryRepository index;
  for (std::size_t count = 0; count < size; ++count) {
    const std::string name = "request_handler_" + std::to_string(1'000'000 + count * 7919 % size);
    index.add_symbol({"app.handlers." + name, name, "function", "app/handlers.py", count + 1});
    index.add_path("app/handlers/" + name + ".py");
  }
  return index;
}

constexpr std::array<std::string_view, 8> kSymbols = {
    "index.flush_segmnt7",     "node.ReaderCache.load_cache12", "resolve_module_scope_99",
    "shopping_cart_total",     "cache.walk_grph_edge31",        "merge_split",
    "graph.option.kubernetes", "delete-queue-entry-5"};
constexpr std::array<std::string_view, 8> kPaths = {"src/acme/parser/indx_cache.py17",
                                                    "graph/edge_scope.py99",
                                                    "/home/ann/acme/node/token_cache.py512",
                                                    "docs/shopping_cart.md",
                                                    "policy/sesion_range.py3",
                                                    "queue\\worker_result400.ts",
                                                    "elsewhere/report7.py",
                                                    "storage/delet_chunk.py888"};
constexpr std::array<std::string_view, 2> kAlike = {"app.handlers.requst_handler_1500000",
                                                    "app/handlers/requst_handler_1500000.py"};

template <const auto& kQueries>
void register_lookup(const std::string& shape, InMemoryRepository (*make)(std::size_t), auto lookup) {
  for (const std::size_t size : {5'000UL, 70'000UL, 1'000'000UL}) {
    benchmark::RegisterBenchmark(("lookup/" + shape + " in " + std::to_string(size) + "/next_steps").c_str(),
                                 [=](benchmark::State& state) {
                                   const InMemoryRepository index = make(size);
                                   for (auto _ : state) {
                                     for (const std::string_view wanted : kQueries)
                                       benchmark::DoNotOptimize(lookup(index, wanted));
                                   }
                                   state.counters["items"] = static_cast<double>(kQueries.size());
                                 });
  }
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  register_lookup<kSymbols>("a symbol", index_of_words, vantrex::workers::nearest_symbols);
  register_lookup<kPaths>("a path", index_of_words, vantrex::workers::nearest_paths);
  register_lookup<kAlike>("an alike symbol", index_of_alike_names, vantrex::workers::nearest_symbols);
  register_lookup<kAlike>("an alike path", index_of_alike_names, vantrex::workers::nearest_paths);
  benchmark::RunSpecifiedBenchmarks();
}

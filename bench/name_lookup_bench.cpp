// How long a lookup of a name or a path takes, by the size of the index.
//
// The indexes are made of words, like those of real trees; "alike" is the hard
// case in which every name of the index is near the wanted one. Each figure is
// the time of one lookup, over a round of queries of all classes.
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "vantrex/models/repository.h"
#include "vantrex/workers/name_lookup.h"

namespace {

using vantrex::models::InMemoryRepository;

constexpr std::array<std::string_view, 32> kWords = {
    "parse",  "file",   "index",  "node",   "token",  "value",  "reader", "writer",
    "cache",  "entry",  "path",   "symbol", "graph",  "edge",   "walk",   "merge",
    "split",  "config", "option", "buffer", "stream", "handle", "worker", "queue",
    "result", "report", "update", "delete", "create", "format", "encode", "decode"};

class Words {
 public:
  // Between `least` and `most` words, joined.
  std::string joined(std::size_t least, std::size_t most, std::string_view separator) {
    std::string text;
    for (std::size_t left = least + random_() % (most - least + 1); left > 0; --left) {
      if (!text.empty()) text += separator;
      text += kWords[random_() % kWords.size()];
    }
    return text;
  }
  std::string number(std::size_t below) { return std::to_string(random_() % below); }

 private:
  std::mt19937_64 random_{20};  // NOLINT(cert-msc32-c,cert-msc51-cpp): the same index each time
};

InMemoryRepository index_of_words(std::size_t size) {
  InMemoryRepository index;
  Words words;
  for (std::size_t count = 0; count < size; ++count) {
    const std::string directory = words.joined(1, 3, "/");
    const std::string name = words.joined(1, 4, "_") + words.number(100);
    const std::string file = directory + "/" + words.joined(1, 2, "_") + words.number(1000) + ".py";
    index.add_symbol({words.joined(2, 4, ".") + "." + name, name, "function", file, count + 1});
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

constexpr std::array<std::string_view, 8> kSymbols = {"index.parse_fiel_tokn7",  "node.ReaderConfigCache12",
                                                      "decode_stream_handle_99", "shopping_cart_total",
                                                      "cache.walk_grph_edge_31", "merge_split",
                                                      "graph.option.kubernetes", "delete-queue-entry-5"};

constexpr std::array<std::string_view, 8> kPaths = {
    "src/parse/file_indx17.py", "walk/graph/edge_99.py",    "/home/ann/tree/node/token/cache_entry512.py",
    "docs/shopping_cart.md",    "config/option_bufer3.py",  "queue\\worker_result400.ts",
    "elsewhere/report7.py",     "update/delet_create888.py"};

constexpr std::array<std::string_view, 2> kAlike = {"app.handlers.requst_handler_1500000",
                                                    "app/handlers/requst_handler_1500000.py"};

template <auto make_index, auto lookup, const auto& queries>
void look_up(benchmark::State& state) {
  const InMemoryRepository index = make_index(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    for (const std::string_view wanted : queries) benchmark::DoNotOptimize(lookup(index, wanted));
  }
  state.SetComplexityN(state.range(0));
  state.counters["per_lookup"] =
      benchmark::Counter(static_cast<double>(queries.size()),
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

constexpr auto kSymbolLookup = vantrex::workers::nearest_symbols;
constexpr auto kPathLookup = vantrex::workers::nearest_paths;

void sizes(benchmark::internal::Benchmark* bench) {
  bench->Arg(5'000)->Arg(70'000)->Arg(1'000'000)->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);
}

BENCHMARK(look_up<index_of_words, kSymbolLookup, kSymbols>)->Name("symbols")->Apply(sizes);
BENCHMARK(look_up<index_of_words, kPathLookup, kPaths>)->Name("paths")->Apply(sizes);
BENCHMARK(look_up<index_of_alike_names, kSymbolLookup, kAlike>)->Name("symbols_alike")->Apply(sizes);
BENCHMARK(look_up<index_of_alike_names, kPathLookup, kAlike>)->Name("paths_alike")->Apply(sizes);

}  // namespace

BENCHMARK_MAIN();

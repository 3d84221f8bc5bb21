// Benchmarks of growth: the time of a life by the size of its answer, by its number of fields or own steps,
// and with a second thread; the time of a name lookup by the size of the index.
//
// Names are growth/SIZE/CONTENDER, threads/JOB/CONTENDER and lookup/INDEX/CONTENDER. The counter `items` is
// the number of bytes, fields, steps or queries of one run.
#include <array>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "life.h"
#include "memory.h"
#include "register.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "vantrex/workers/name_lookup.h"
#include "words.h"

namespace vantrex::bench {

namespace {

using models::InMemoryRepository;
using tool_handlers::next_steps::finish_answer;
using values::JsonList;
using values::JsonObject;

void grow_files(benchmark::State& state, const NamedContender& named, std::size_t bytes) {
  const Subject subject = files_subject(bytes / 120, Floats::with);
  const auto contender = named.make(subject);
  state.counters["items"] = static_cast<double>(contender->run_life());
  for (auto _ : state) benchmark::DoNotOptimize(contender->run_life());
}

std::size_t finished_bytes(JsonObject answer) {
  return tool_handlers::tool_result_text(finish_answer(std::move(answer), "explore")).size();
}

// The life of an answer with an object of many fields. Returns the bytes of its text.
std::size_t fields_life(const std::vector<std::string>& names) {
  JsonObject fields;
  for (const std::string& name : names) fields.set(name, name.size());
  return finished_bytes(JsonObject{{"fields", std::move(fields)}});
}

// The life of an answer with many own steps. Returns the bytes of its text.
std::size_t own_steps_life(const std::vector<std::string>& names) {
  JsonList steps;
  steps.reserve(names.size());
  for (const std::string& name : names) {
    steps.push_back(tool_handlers::next_steps::step("symbol", "Next on the route",
                                                    JsonObject{{"action", "detail"}, {"fqn", name}}));
  }
  return finished_bytes(JsonObject{{"fqn", "acme"}, {"next_steps", std::move(steps)}});
}

void grow_count(benchmark::State& state, std::size_t (*life)(const std::vector<std::string>&),
                std::size_t count) {
  std::vector<std::string> names(count);
  for (std::size_t at = 0; at < count; ++at) names[at] = "acme.storage.symbol_" + std::to_string(at);
  state.counters["items"] = static_cast<double>(count);
  for (auto _ : state) benchmark::DoNotOptimize(life(names));
}

// Each thread builds and finishes its own answers.
void run_separate_lives(benchmark::State& state) {
  const Subject subject = kSubjects[2].make(Floats::with);
  const auto contender = ours(subject);
  for (auto _ : state) benchmark::DoNotOptimize(contender->run_life());
}

// All threads finish copies of one answer.
void finish_shared_answer(benchmark::State& state) {
  static const JsonObject shared = [] {
    JsonList results;
    for (const Hit& row : search_rows(Floats::with).hits)
      results.push_back(JsonObject{{"fqn", row.fqn}, {"snippet", row.snippet}, {"doc", row.doc}});
    return JsonObject{{"results", std::move(results)}};
  }();
  for (auto _ : state) benchmark::DoNotOptimize(finish_answer(shared, "search"));
}

// An index of `size` names. With `alike` every name is near the others, which is the slowest case for a
// lookup; otherwise names are like those of a real tree.
InMemoryRepository index_of(std::size_t size, bool alike) {
  InMemoryRepository index;
  Random random(20);
  for (std::size_t at = 0; at < size; ++at) {
    const std::string name = alike ? "request_handler_" + std::to_string(1'000'000 + at * 7919 % size)
                                   : function_name(random) + std::to_string(random.below(100));
    index.add_symbol(
        {joined({"acme.", class_name(random), ".", name}), name, "function", "acme/app.py", at + 1});
  }
  return index;
}

void look_up(benchmark::State& state, std::size_t size, bool alike) {
  constexpr std::array<std::string_view, 6> kWanted = {
      "index.flush_segmnt7",       "node.ReaderCache.load_cache12", "resolve_module_scope_99",
      "cache.collect_grph_edge31", "graph.option.kubernetes",       "requst_handler_1500000"};
  const InMemoryRepository index = index_of(size, alike);
  state.counters["items"] = kWanted.size();
  for (auto _ : state) {
    for (const std::string_view wanted : kWanted)
      benchmark::DoNotOptimize(workers::nearest_symbols(index, wanted));
  }
}

void add_all() {
  constexpr std::array<std::pair<std::string_view, std::size_t>, 4> kSizes = {
      {{"1 KB", 1'000}, {"100 KB", 100'000}, {"10 MB", 10'000'000}, {"100 MB", 100'000'000}}};
  for (const auto& [name, bytes] : kSizes) {
    for (const NamedContender& contender : kContenders)
      add(joined({"growth/", name, ", per byte/", contender.name}), grow_files, contender, bytes);
  }
  for (const std::size_t count : {10'000UL, 100'000UL, 1'000'000UL})
    add("growth/" + std::to_string(count) + " fields, per field/next_steps", grow_count, fields_life, count);
  for (const std::size_t count : {100UL, 1'000UL, 10'000UL})
    add("growth/" + std::to_string(count) + " own steps, per step/next_steps", grow_count, own_steps_life,
        count);
  add("threads/one, own lives/next_steps", run_separate_lives);
  add("threads/two, own lives/next_steps", run_separate_lives)->Threads(2);
  add("threads/one, one kept answer/next_steps", finish_shared_answer);
  add("threads/two, one kept answer/next_steps", finish_shared_answer)->Threads(2);
  for (const std::size_t size : {5'000UL, 70'000UL, 1'000'000UL}) {
    add("lookup/in " + std::to_string(size) + " names/next_steps", look_up, size, false);
    add("lookup/in " + std::to_string(size) + " alike names/next_steps", look_up, size, true);
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

// Benchmarks of growth: the time of a life by the size of its answer, by its number of fields or own steps,
// and with a second thread.
//
// Names are growth/SIZE/CONTENDER and threads/JOB/CONTENDER. The counter `items` is the number of bytes,
// fields or steps of one run.
#include <array>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "life.h"
#include "memory.h"
#include "register.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/tool_result.h"
#include "words.h"

namespace vantrex::bench {

namespace {

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

// How a life grows: with the bytes of its answer, with shapes that invite
// quadratic work, and with a second thread.
//
// Names are growth/SHAPE/CONTENDER and threads/WORK/CONTENDER; the counter `items`
// says how many bytes, fields or steps a life has.
#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "life.h"
#include "memory_settings.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/tool_result.h"

namespace vantrex::bench {

namespace {

using tool_handlers::next_steps::finish_answer;
using values::JsonList;
using values::JsonObject;

// `count` file rows, which are made when they are first needed.
void register_files(const std::string& name, std::size_t count) {
  const auto subject = std::make_shared<std::unique_ptr<Subject>>();
  for (const NamedContender& contender : kContenders) {
    const std::string full_name = "growth/" + name + ", per byte/" + std::string(contender.name);
    benchmark::RegisterBenchmark(full_name.c_str(), [subject, count, &contender](benchmark::State& state) {
      if (*subject == nullptr) *subject = std::make_unique<Subject>(files_subject(count, Floats::with));
      const auto way = contender.make(**subject);
      const std::size_t bytes = way->live();
      for (auto _ : state) benchmark::DoNotOptimize(way->live());
      state.counters["items"] = static_cast<double>(bytes);
    });
  }
}

std::size_t finished_bytes(JsonObject answer) {
  return tool_handlers::tool_result_text(finish_answer(std::move(answer), "explore")).size();
}

// An object of many fields.
std::size_t live_fields(const std::vector<std::string>& names) {
  JsonObject fields;
  for (const std::string& name : names) fields.set(name, name.size());
  return finished_bytes(JsonObject{{"fields", std::move(fields)}});
}

// Many steps of the tool's own.
std::size_t live_own_steps(const std::vector<std::string>& names) {
  JsonList steps;
  steps.reserve(names.size());
  for (const std::string& name : names) {
    steps.push_back(tool_handlers::next_steps::step("symbol", "Next on the route",
                                                    JsonObject{{"action", "detail"}, {"fqn", name}}));
  }
  return finished_bytes(JsonObject{{"fqn", "acme"}, {"next_steps", std::move(steps)}});
}

using Live = std::size_t (*)(const std::vector<std::string>& names);

void register_shape(const std::string& name, Live live, std::size_t count) {
  benchmark::RegisterBenchmark(
      ("growth/" + std::to_string(count) + " " + name + "s, per " + name + "/next_steps").c_str(),
      [live, count](benchmark::State& state) {
        std::vector<std::string> names(count);
        for (std::size_t at = 0; at < count; ++at) names[at] = "acme.storage.symbol_" + std::to_string(at);
        for (auto _ : state) benchmark::DoNotOptimize(live(names));
        state.counters["items"] = static_cast<double>(count);
      });
}

// The same work on one thread and on each of two.
void register_threads(const std::string& name, void (*run)(benchmark::State& state)) {
  benchmark::RegisterBenchmark(("threads/" + name + ", one/next_steps").c_str(), run);
  benchmark::RegisterBenchmark(("threads/" + name + ", two/next_steps").c_str(), run)->Threads(2);
}

// Every thread lives lives of its own.
void live_apart(benchmark::State& state) {
  const Subject subject{"search", "symbols", "query", "flush", search_rows(Floats::with)};
  const auto way = ours(subject);
  for (auto _ : state) benchmark::DoNotOptimize(way->live());
}

// All threads finish the same answer, which is kept. They share its long texts.
void finish_shared(benchmark::State& state) {
  static const JsonObject shared = [] {
    const Search rows = search_rows(Floats::with);
    JsonList results;
    for (const Hit& row : rows.hits)
      results.push_back(JsonObject{{"fqn", row.fqn}, {"snippet", row.snippet}, {"doc", row.doc}});
    return JsonObject{{"results", std::move(results)}};
  }();
  for (auto _ : state) benchmark::DoNotOptimize(finish_answer(shared, "search"));
}

void register_all() {
  constexpr std::size_t kRowBytes = 120;
  register_files("1 KB", 1'000 / kRowBytes);
  register_files("100 KB", 100'000 / kRowBytes);
  register_files("10 MB", 10'000'000 / kRowBytes);
  register_files("100 MB", 100'000'000 / kRowBytes);
  for (const std::size_t count : {10'000UL, 100'000UL, 1'000'000UL})
    register_shape("field", live_fields, count);
  for (const std::size_t count : {100UL, 1'000UL, 10'000UL})
    register_shape("own step", live_own_steps, count);
  register_threads("own lives", live_apart);
  register_threads("one kept answer", finish_shared);
}

}  // namespace

}  // namespace vantrex::bench

int main(int argc, char** argv) {
  vantrex::bench::keep_freed_memory();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  vantrex::bench::register_all();
  benchmark::RunSpecifiedBenchmarks();
}

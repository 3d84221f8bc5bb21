// Answers' lives on next_steps and on general JSON libraries.
//
// Every contender is checked before anything is timed: on the answers without
// floats (libraries write floats in different forms) it must write the text that
// next_steps writes, byte for byte, also when the answer is kept; on the answers
// with floats, a text that reads the same. Names are life/ANSWER/CONTENDER for a
// whole life and stages/ANSWER/CONTENDER for its stages apart.
#include <algorithm>
#include <chrono>
#include <deque>
#include <exception>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include "counting_new.h"
#include "life.h"
#include "memory_settings.h"

namespace vantrex::bench {

namespace {

using Stage = void (*)(Contender& contender);

struct NamedStage {
  const char* name;
  Stage run;
};
constexpr NamedStage kBuild{"build", [](Contender& contender) { contender.build(); }};
constexpr NamedStage kFinish{"finish", [](Contender& contender) { contender.finish(); }};
constexpr NamedStage kFinishKept{"finish kept", [](Contender& contender) { contender.finish_kept(); }};
constexpr NamedStage kWrite{"write",
                            [](Contender& contender) { benchmark::DoNotOptimize(contender.write()); }};
constexpr NamedStage kDestroy{"destroy", [](Contender& contender) { contender.destroy(); }};
constexpr std::array kLife = {kBuild, kFinish, kWrite, kDestroy};

void require_equal(bool equal, const NamedContender& contender, std::string_view answer) {
  if (equal) return;
  throw std::runtime_error(std::string(contender.name)
                               .append(" writes another text of ")
                               .append(answer)
                               .append(" than next_steps"));
}

std::string text_of(const NamedContender& contender, const Subject& subject, Stage finish) {
  const auto way = contender.make(subject);
  way->build();
  finish(*way);
  return std::string(way->write());
}

void check(const NamedSubject& named) {
  const Subject plain = named.make(Floats::without);
  const Subject whole = named.make(Floats::with);
  const std::string plain_text = text_of(kContenders.front(), plain, kFinish.run);
  const std::string whole_text = text_of(kContenders.front(), whole, kFinish.run);
  for (const NamedContender& contender : kContenders) {
    for (const NamedStage& finish : {kFinish, kFinishKept})
      require_equal(text_of(contender, plain, finish.run) == plain_text, contender, named.name);
    const std::string text = text_of(contender, whole, kFinish.run);
    require_equal(text == whole_text ||
                      nlohmann::ordered_json::parse(text) == nlohmann::ordered_json::parse(whole_text),
                  contender, named.name);
  }
}

void set_counts(benchmark::State& state, const std::string& prefix, std::size_t allocations,
                std::size_t peak_bytes) {
  state.counters[prefix + "allocations"] = static_cast<double>(allocations);
  state.counters[prefix + "peak"] = static_cast<double>(peak_bytes);
}

// The allocations of a life that is not the contender's first, and the most
// bytes held at once, what it keeps between lives included.
void measure_life(benchmark::State& state, const NamedContender& named, const Subject& subject) {
  const auto contender = named.make(subject);
  {
    NewCount count;
    const auto counted = named.make(subject);
    counted->live();
    const std::size_t peak_bytes = count.peak_bytes();
    count.restart();
    counted->live();
    set_counts(state, "", count.allocations(), peak_bytes);
  }
  for (auto _ : state) benchmark::DoNotOptimize(contender->live());
}

void count_stages(benchmark::State& state, const NamedContender& named, const Subject& subject) {
  NewCount count;
  const auto counted = named.make(subject);
  const auto run = [&](const NamedStage& stage) {
    count.restart();
    stage.run(*counted);
    set_counts(state, std::string(stage.name) + " ", count.allocations(), count.peak_bytes());
  };
  counted->live();
  for (const NamedStage& stage : kLife) run(stage);
  counted->build();
  run(kFinishKept);
}

// Runs a stage on all contenders. Adds the seconds of one of them to the counter
// of the stage, and returns those of all.
double time_stage(const std::vector<std::unique_ptr<Contender>>& contenders, const NamedStage& stage,
                  benchmark::State& state) {
  const auto begin = std::chrono::steady_clock::now();
  for (const auto& contender : contenders) stage.run(*contender);
  const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
  state.counters[std::string(stage.name) + " seconds"] +=
      elapsed.count() / static_cast<double>(contenders.size());
  return elapsed.count();
}

// Small answers live side by side, so that the clock is read seldom.
void measure_stages(benchmark::State& state, const NamedContender& named, const Subject& subject) {
  count_stages(state, named, subject);
  std::vector<std::unique_ptr<Contender>> contenders(1);
  contenders[0] = named.make(subject);
  if (contenders[0]->live() < 10'000) contenders.resize(16);
  for (auto& contender : contenders) contender = named.make(subject);
  for (auto _ : state) {
    double seconds = 0;
    for (const NamedStage& stage : kLife) seconds += time_stage(contenders, stage, state);
    for (const auto& contender : contenders) contender->build();
    seconds += time_stage(contenders, kFinishKept, state);
    for (const auto& contender : contenders) contender->destroy();
    state.SetIterationTime(seconds);
  }
  for (auto& [name, counter] : state.counters) {
    if (name.ends_with(" seconds")) counter.value /= static_cast<double>(state.iterations());
  }
}

void add(const NamedSubject& named, const Subject& subject) {
  for (const NamedContender& contender : kContenders) {
    const std::string name = std::string(named.name).append("/").append(contender.name);
    benchmark::RegisterBenchmark(("life/" + name).c_str(), [&contender, &subject](benchmark::State& state) {
      measure_life(state, contender, subject);
    });
    benchmark::RegisterBenchmark(("stages/" + name).c_str(), [&contender, &subject](benchmark::State& state) {
      measure_stages(state, contender, subject);
    })->UseManualTime();
  }
}

int run(int argc, char** argv) {
  keep_freed_memory();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  for (const NamedSubject& named : kSubjects) check(named);
  std::deque<Subject> subjects;  // which stay where they are
  for (const NamedSubject& named : kSubjects) add(named, subjects.emplace_back(named.make(Floats::with)));
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace

}  // namespace vantrex::bench

int main(int argc, char** argv) {
  try {
    return vantrex::bench::run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "benchmark stopped: " << error.what() << '\n';
    return 1;
  }
}

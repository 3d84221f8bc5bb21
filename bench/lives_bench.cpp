// Benchmarks of answers' lives with next_steps and with general JSON libraries.
//
// Names are life/ANSWER/CONTENDER for a whole life and stages/ANSWER/CONTENDER for its stages.
//
// Each contender is checked before anything is timed. Without floats, which libraries write in different
// forms, its text must equal the text of next_steps, also when the answer is kept. With floats, the two texts
// must parse to equal values.
#include <chrono>
#include <deque>
#include <exception>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

#include "life.h"
#include "memory.h"
#include "register.h"

namespace vantrex::bench {

namespace {

struct Stage {
  std::string name;
  void (Contender::*run)();
};
const Stage kFinishKept{"finish kept", &Contender::finish_kept};
const std::array<Stage, 4> kLife = {{{"build", &Contender::build},
                                     {"finish", &Contender::finish},
                                     {"write", &Contender::write},
                                     {"destroy", &Contender::destroy}}};

std::string text_of(const NamedContender& named, const Subject& subject, void (Contender::*finish)()) {
  const auto contender = named.make(subject);
  contender->build();
  (*contender.*finish)();
  contender->write();
  return std::string(contender->text());
}

bool reads_the_same(const std::string& text, const std::string& expected) {
  return text == expected || nlohmann::ordered_json::parse(text) == nlohmann::ordered_json::parse(expected);
}

void check(const NamedSubject& named) {
  const Subject plain = named.make(Floats::without);
  const Subject whole = named.make(Floats::with);
  const std::string plain_text = text_of(kContenders[0], plain, &Contender::finish);
  const std::string whole_text = text_of(kContenders[0], whole, &Contender::finish);
  for (const NamedContender& contender : kContenders) {
    if (text_of(contender, plain, &Contender::finish) == plain_text &&
        text_of(contender, plain, &Contender::finish_kept) == plain_text &&
        reads_the_same(text_of(contender, whole, &Contender::finish), whole_text))
      continue;
    throw std::runtime_error(std::string(contender.name) +
                             " and next_steps write different answers: " + std::string(named.name));
  }
}

void set_counts(benchmark::State& state, const std::string& prefix, std::size_t allocations,
                std::size_t peak_bytes) {
  state.counters[prefix + "allocations"] = static_cast<double>(allocations);
  state.counters[prefix + "peak"] = static_cast<double>(peak_bytes);
}

// Counts the allocations of a second life, which finds the memory that the contender kept. The peak is that
// of the first life.
void measure_life(benchmark::State& state, const NamedContender& named, const Subject& subject) {
  {
    NewCount count;
    const auto counted = named.make(subject);
    counted->run_life();
    const std::size_t peak_bytes = count.peak_bytes();
    count.restart();
    counted->run_life();
    set_counts(state, "", count.allocations(), peak_bytes);
  }
  const auto contender = named.make(subject);
  for (auto _ : state) benchmark::DoNotOptimize(contender->run_life());
}

void count_stages(benchmark::State& state, const NamedContender& named, const Subject& subject) {
  NewCount count;
  const auto counted = named.make(subject);
  const auto run = [&](const Stage& stage) {
    count.restart();
    (*counted.*stage.run)();
    set_counts(state, stage.name + " ", count.allocations(), count.peak_bytes());
  };
  counted->run_life();
  for (const Stage& stage : kLife) run(stage);
  counted->build();
  run(kFinishKept);
}

// Measures each stage. Of a small answer, 16 contenders run a stage between two readings of the clock.
void measure_stages(benchmark::State& state, const NamedContender& named, const Subject& subject) {
  count_stages(state, named, subject);
  std::vector<std::unique_ptr<Contender>> contenders;
  const std::size_t count = named.make(subject)->run_life() < 10'000 ? 16 : 1;
  while (contenders.size() < count) contenders.push_back(named.make(subject));
  const auto run = [&](const Stage& stage) {
    const auto begin = std::chrono::steady_clock::now();
    for (const auto& contender : contenders) (*contender.*stage.run)();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin;
    state.counters[stage.name + " seconds"] += elapsed.count();
    return elapsed.count();
  };
  for (auto _ : state) {
    double seconds = 0;
    for (const Stage& stage : kLife) seconds += run(stage);
    for (const auto& contender : contenders) contender->build();
    state.SetIterationTime(seconds + run(kFinishKept));
    for (const auto& contender : contenders) contender->destroy();
  }
  for (auto& [name, counter] : state.counters) {
    if (name.ends_with(" seconds"))
      counter.value /= static_cast<double>(state.iterations()) * static_cast<double>(count);
  }
}

void add_all(const NamedSubject& named, const Subject& subject) {
  for (const NamedContender& contender : kContenders) {
    const std::string name = std::string(named.name).append("/").append(contender.name);
    add("life/" + name, measure_life, contender, std::cref(subject));
    add("stages/" + name, measure_stages, contender, std::cref(subject))->UseManualTime();
  }
}

int run(int argc, char** argv) {
  keep_freed_memory();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  for (const NamedSubject& named : kSubjects) check(named);
  std::deque<Subject> subjects;  // a deque does not move its elements
  for (const NamedSubject& named : kSubjects) add_all(named, subjects.emplace_back(named.make(Floats::with)));
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

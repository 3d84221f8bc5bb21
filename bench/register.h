// Registration of benchmarks.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace vantrex::bench {

// Registers a benchmark. `arguments` are a function and its arguments after the state. The result is the
// fastest repetition, because other load on the machine only slows a repetition down.
template <typename... Arguments>
benchmark::internal::Benchmark* add(const std::string& name, Arguments... arguments) {
  const auto fastest = [](const std::vector<double>& rounds) {
    return *std::min_element(rounds.begin(), rounds.end());
  };
  return benchmark::RegisterBenchmark(name.c_str(), arguments...)->ComputeStatistics("fastest", fastest);
}

}  // namespace vantrex::bench

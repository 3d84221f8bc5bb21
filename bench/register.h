// How the benchmarks are registered.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

namespace vantrex::bench {

// Registers `run(state, arguments...)`. Its fastest round counts: what else the
// machine does only slows one down.
template <typename... Arguments>
benchmark::internal::Benchmark* add(const std::string& name, Arguments... arguments) {
  const auto fastest = [](const std::vector<double>& rounds) {
    return *std::min_element(rounds.begin(), rounds.end());
  };
  return benchmark::RegisterBenchmark(name.c_str(), arguments...)->ComputeStatistics("fastest", fastest);
}

}  // namespace vantrex::bench

// One measured piece of work, and what it allocates.
#pragma once

#include <cstddef>

#include <benchmark/benchmark.h>

#include "counting_new.h"

namespace vantrex::bench {

// Times `work`, whose result keeps it from being left out. Beside the time
// stand the allocations of one run and the most bytes it held at once; these
// are counted in a run of their own, before the clock runs.
template <typename Work>
void measure(benchmark::State& state, Work work) {
  {
    const NewCount count;
    benchmark::DoNotOptimize(work());
    state.counters["allocations"] = static_cast<double>(count.allocations());
    state.counters["peak_bytes"] = static_cast<double>(count.peak_bytes());
  }
  for (auto _ : state) benchmark::DoNotOptimize(work());
}

}  // namespace vantrex::bench

// The tables that a run of the benchmarks ends with.
#pragma once

#include <array>
#include <ostream>
#include <string_view>

#include "report/results.h"

namespace vantrex::bench {

inline constexpr std::array<std::string_view, 6> kAnswers = {"detail", "callers", "search",
                                                             "files",  "huge",    "floats"};
inline constexpr std::string_view kOwnName = "next_steps";
inline constexpr std::array<std::string_view, 3> kPeerNames = {"RapidJSON", "Boost.JSON", "nlohmann"};

// The nanoseconds of `library` for `stage` of `answer`.
double time_of(const Results& results, std::string_view stage, std::string_view answer,
               std::string_view library);

// Prints every table that `results` has figures for.
void print_tables(std::ostream& out, const Results& results);

}  // namespace vantrex::bench

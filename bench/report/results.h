// The medians that Google Benchmark wrote.
#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vantrex::bench {

// One benchmark's medians over its repetitions.
struct Median {
  double nanoseconds = 0;  // of processor time, for one run
  std::map<std::string, double, std::less<>> counters;
};

class Results {
 public:
  // Adds the medians in the file at `path`, which is JSON as --benchmark_out
  // writes it. Throws std::runtime_error when it holds none.
  void read(const std::string& path);

  // The median under `name`, or null.
  const Median* find(std::string_view name) const;
  // The same; throws std::runtime_error when there is none.
  const Median& at(std::string_view name) const;

  auto begin() const { return medians_.begin(); }
  auto end() const { return medians_.end(); }

 private:
  std::map<std::string, Median, std::less<>> medians_;
};

}  // namespace vantrex::bench

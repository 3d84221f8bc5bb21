// What the benchmarks measured, as rows with a cell for every contender.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vantrex::bench {

// The contenders in the order of the columns. The first is ours.
inline constexpr std::string_view kOurs = "next_steps";
inline constexpr std::string_view kColumns[] = {kOurs, "RapidJSON", "Boost.JSON", "nlohmann"};

struct Cell {
  double nanoseconds = 0;   // the median, of one life, stage, lookup or item
  double allocations = -1;  // negative where they were not counted
  double peak_bytes = -1;
};

struct Row {
  std::string group;  // life, build, finish, finish kept, write, destroy, growth, threads, lookup
  std::string name;
  std::int64_t position = 0;                       // in its file
  std::map<std::string, Cell, std::less<>> cells;  // by contender
};

class Results {
 public:
  // Adds the medians in the file at `path`, which is JSON as --benchmark_out
  // writes it. Throws std::exception when it holds none.
  void read(const std::string& path);

  // In the order of their groups, in these as the benchmarks were registered.
  const std::vector<Row>& rows() const { return rows_; }
  // The cell of `contender`; throws std::out_of_range when there is none.
  const Cell& at(std::string_view group, std::string_view name, std::string_view contender) const;

 private:
  Row& row_of(const std::string& group, const std::string& name, std::int64_t position);

  std::vector<Row> rows_;
};

}  // namespace vantrex::bench

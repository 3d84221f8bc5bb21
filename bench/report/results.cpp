#include "report/results.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <nlohmann/json.hpp>

namespace vantrex::bench {

namespace {

constexpr std::array<std::string_view, 5> kStages = {"build", "finish", "finish kept", "write", "destroy"};
constexpr std::array<std::string_view, 9> kGroups = {"life",    "build",  "finish",  "finish kept", "write",
                                                     "destroy", "growth", "threads", "lookup"};

// The text of `file` with null for NaN, which Google Benchmark writes for the
// spread of a counter that is always 0.
std::string without_nan(std::istream& file) {
  std::string text{std::istreambuf_iterator<char>(file), {}};
  constexpr std::string_view kNan = ": NaN";
  for (std::size_t at = 0; (at = text.find(kNan, at)) != std::string::npos;)
    text.replace(at, kNan.size(), ": null");
  return text;
}

// The parts of GROUP/NAME/CONTENDER; what may follow is Google Benchmark's.
std::array<std::string, 3> parts_of(const std::string& name) {
  std::array<std::string, 3> parts;
  std::size_t begin = 0;
  for (std::string& part : parts) {
    const std::size_t end = std::min(name.find('/', begin), name.size());
    part = name.substr(begin, end - begin);
    begin = std::min(end + 1, name.size());
  }
  return parts;
}

}  // namespace

void Results::read(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + " cannot be read");
  const nlohmann::json document = nlohmann::json::parse(without_nan(file));
  const std::size_t before = rows_.size();
  for (const nlohmann::json& entry : document.at("benchmarks")) {
    if (entry.value("aggregate_name", "") != "median") continue;
    const auto [group, name, contender] = parts_of(entry.at("run_name").get<std::string>());
    const auto position = entry.at("family_index").get<std::int64_t>();
    if (group != "stages") {
      row_of(group, name, position).cells[contender] = {
          entry.at("cpu_time").get<double>() / entry.value("items", 1.0), entry.value("allocations", -1.0),
          entry.value("peak", -1.0)};
      continue;
    }
    for (const std::string_view stage : kStages) {
      const std::string prefix = std::string(stage) + " ";
      row_of(std::string(stage), name, position).cells[contender] = {
          entry.at(prefix + "seconds").get<double>() * 1e9, entry.at(prefix + "allocations").get<double>(),
          entry.at(prefix + "peak").get<double>()};
    }
  }
  if (rows_.size() == before) throw std::runtime_error(path + " holds no medians");
  const auto order = [](const Row& row) {
    return std::pair(std::find(kGroups.begin(), kGroups.end(), row.group), row.position);
  };
  std::sort(rows_.begin(), rows_.end(), [&](const Row& a, const Row& b) { return order(a) < order(b); });
}

Row& Results::row_of(const std::string& group, const std::string& name, std::int64_t position) {
  for (Row& row : rows_) {
    if (row.group == group && row.name == name) {
      row.position = std::min(row.position, position);
      return row;
    }
  }
  return rows_.emplace_back(Row{group, name, position, {}});
}

const Cell& Results::at(std::string_view group, std::string_view name, std::string_view contender) const {
  for (const Row& row : rows_) {
    if (row.group == group && row.name == name) return row.cells.at(std::string(contender));
  }
  throw std::out_of_range("no row is called " + std::string(group).append(" ").append(name));
}

}  // namespace vantrex::bench

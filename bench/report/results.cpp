#include "report/results.h"

#include <fstream>
#include <iterator>

#include <nlohmann/json.hpp>

namespace vantrex::bench {

namespace {

double nanoseconds(const nlohmann::json& entry) {
  static const std::map<std::string, double> kUnits = {{"ns", 1}, {"us", 1e3}, {"ms", 1e6}, {"s", 1e9}};
  return entry.at("cpu_time").get<double>() * kUnits.at(entry.at("time_unit").get<std::string>());
}

// The text of `file` with null for NaN, which Google Benchmark writes for the
// spread of a counter that is always 0.
std::string without_nan(std::istream& file) {
  std::string text{std::istreambuf_iterator<char>(file), {}};
  constexpr std::string_view kNan = ": NaN";
  for (std::size_t at = 0; (at = text.find(kNan, at)) != std::string::npos;)
    text.replace(at, kNan.size(), ": null");
  return text;
}

}  // namespace

void Results::read(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + " cannot be read");
  const nlohmann::json document = nlohmann::json::parse(without_nan(file));
  const std::size_t before = medians_.size();
  for (const nlohmann::json& entry : document.at("benchmarks")) {
    if (entry.value("aggregate_name", "") != "median") continue;
    Median& median = medians_[entry.at("run_name").get<std::string>()];
    median.nanoseconds = nanoseconds(entry);
    for (const auto& [key, value] : entry.items()) {
      if (value.is_number()) median.counters[key] = value.get<double>();
    }
  }
  if (medians_.size() == before) throw std::runtime_error(path + " holds no medians");
}

const Median* Results::find(std::string_view name) const {
  const auto found = medians_.find(name);
  return found == medians_.end() ? nullptr : &found->second;
}

const Median& Results::at(std::string_view name) const {
  if (const Median* median = find(name)) return *median;
  throw std::runtime_error("no benchmark is called " + std::string(name));
}

}  // namespace vantrex::bench

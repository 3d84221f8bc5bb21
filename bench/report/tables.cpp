#include "report/tables.h"

#include <algorithm>
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <utility>

namespace vantrex::bench {

namespace {

std::string left(std::string_view text, std::size_t width) {
  std::string cell(text);
  cell.resize(std::max(cell.size(), width), ' ');
  return cell;
}

std::string right(std::string_view text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ').append(text);
}

std::string number(double value, std::size_t width, int digits) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(digits) << value;
  return right(text.str(), width);
}

std::string microseconds(double nanoseconds) {
  return number(nanoseconds / 1e3, 12, nanoseconds < 1e5 ? 2 : 0);
}

const Median& median_of(const Results& results, std::string_view stage, std::string_view answer,
                        std::string_view library) {
  std::string name(stage);
  name.append("/").append(answer).append("/").append(library);
  return results.at(name);
}

double best_peer(const Results& results, std::string_view stage, std::string_view answer) {
  double best = time_of(results, stage, answer, kPeerNames.front());
  for (const std::string_view peer : kPeerNames) {
    best = std::min(best, time_of(results, stage, answer, peer));
  }
  return best;
}

void print_stage(std::ostream& out, const Results& results, std::string_view stage, std::string_view title) {
  out << '\n' << title << ", in microseconds\n\n" << left("answer", 10) << right(kOwnName, 12);
  for (const std::string_view peer : kPeerNames) out << right(peer, 12);
  out << right("best peer / ours", 19) << right("allocations", 14) << '\n';
  for (const std::string_view answer : kAnswers) {
    const double own = time_of(results, stage, answer, kOwnName);
    out << left(answer, 10) << microseconds(own);
    for (const std::string_view peer : kPeerNames) out << microseconds(time_of(results, stage, answer, peer));
    out << number(best_peer(results, stage, answer) / own, 19, 2)
        << number(median_of(results, stage, answer, kOwnName).counters.at("allocations"), 14, 0) << '\n';
  }
}

// One row for each benchmark of a group that counts items.
void print_items(std::ostream& out, const Results& results, std::string_view group, std::string_view title,
                 std::string_view item) {
  out << '\n'
      << title << ", per " << item << "\n\n"
      << left("", 30) << right("ns", 10) << right("peak bytes", 14) << right("allocations", 14) << '\n';
  std::map<std::pair<std::string, double>, std::string> names;  // by shape, then by size
  for (const auto& [name, median] : results) {
    if (name.rfind(group, 0) != 0) continue;
    names[{name.substr(0, name.rfind('/')), median.counters.at("items")}] = name;
  }
  for (const auto& [order, name] : names) {
    const Median& median = results.at(name);
    out << left(name.substr(group.size()), 30) << number(median.nanoseconds / order.second, 10, 3)
        << number(median.counters.at("peak_bytes") / order.second, 14, 2)
        << number(median.counters.at("allocations"), 14, 0) << '\n';
  }
}

void print_threads(std::ostream& out, const Results& results) {
  out << "\nTwo threads finishing, processor time of one answer in microseconds\n\n"
      << left("answer", 12) << right("shared", 12) << right("a copy each", 12) << right("lost", 10) << '\n';
  for (const std::string_view answer : {"callers", "search", "long texts"}) {
    const std::string name = "threads/" + std::string(answer);
    const double shared = results.at(name + "/shared/threads:2").nanoseconds;
    const double separate = results.at(name + "/separate/threads:2").nanoseconds;
    out << left(answer, 12) << microseconds(shared) << microseconds(separate)
        << number(100 * (1 - separate / shared), 8, 1) << " %\n";
  }
}

void print_lookups(std::ostream& out, const Results& results) {
  out << "\nOne name lookup in an index of so many names, in milliseconds\n\n";
  std::map<std::pair<std::string, double>, double> lookups;  // by kind, then by size
  for (const auto& [name, median] : results) {
    const auto seconds = median.counters.find("per_lookup");
    if (seconds == median.counters.end()) continue;
    const std::size_t slash = name.rfind('/');
    lookups[{name.substr(0, slash), std::stod(name.substr(slash + 1))}] = seconds->second;
  }
  for (const auto& [kind, seconds] : lookups) {
    out << left(kind.first, 16) << number(kind.second, 10, 0) << number(seconds * 1e3, 12, 3) << '\n';
  }
}

}  // namespace

double time_of(const Results& results, std::string_view stage, std::string_view answer,
               std::string_view library) {
  return median_of(results, stage, answer, library).nanoseconds;
}

void print_tables(std::ostream& out, const Results& results) {
  print_stage(out, results, "finish", "The whole job");
  print_stage(out, results, "write", "The whole job and the text of the answer");
  print_stage(out, results, "copy", "The copy without null fields alone");
  print_stage(out, results, "count", "The byte count and the hint bytes alone");
  print_items(out, results, "growth/", "File rows of growing size", "byte");
  print_items(out, results, "linear/", "Shapes that invite quadratic work", "item");
  print_threads(out, results);
  print_lookups(out, results);
}

}  // namespace vantrex::bench

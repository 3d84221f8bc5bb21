// bench_report PICTURE README RESULTS...: prints the table of the RESULTS, files
// that the benchmarks wrote, draws the PICTURE, and puts the rows of whole lives
// into the README, between the lines <!-- bench --> and <!-- /bench -->.
#include <chrono>
#include <ctime>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "report/picture.h"
#include "report/results.h"

namespace vantrex::bench {

namespace {

std::string number(double value, int digits) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(digits) << value;
  return text.str();
}

std::string bytes_text(double bytes) {
  if (bytes < 1e4) return number(bytes / 1e3, 1) + " KB";
  return bytes < 1e6 ? number(bytes / 1e3, 0) + " KB" : number(bytes / 1e6, bytes < 1e7 ? 1 : 0) + " MB";
}

// Ours in time, the others in times as long.
std::string cell_text(const Row& row, std::string_view contender) {
  const auto found = row.cells.find(contender);
  if (found == row.cells.end()) return "";
  const Cell& cell = found->second;
  std::string text = contender == kOurs
                         ? time_text(cell.nanoseconds)
                         : number(cell.nanoseconds / row.cells.at(std::string(kOurs)).nanoseconds, 2) + " ×";
  if (cell.allocations >= 0) text += ", " + number(cell.allocations, 0) + ", " + bytes_text(cell.peak_bytes);
  return text;
}

// The characters of UTF-8, which stand for columns here.
std::size_t width_of(std::string_view text) {
  std::size_t width = 0;
  for (const char byte : text) width += (static_cast<unsigned char>(byte) & 0xc0) != 0x80;
  return width;
}

void print_cell(std::ostream& out, std::string_view text, std::size_t width) {
  out << "| " << text << std::string(width - std::min(width, width_of(text)), ' ') << ' ';
}

// All rows, or those of one group, as a Markdown table.
void print_table(std::ostream& out, const Results& results, std::string_view group) {
  constexpr std::size_t kName = 38;
  constexpr std::size_t kCell = 24;
  const auto line = [&](std::string_view first, auto text_of) {
    print_cell(out, first, kName);
    for (const std::string_view contender : kColumns) print_cell(out, text_of(contender), kCell);
    out << "|\n";
  };
  line("", [](std::string_view contender) { return std::string(contender); });
  line("---", [](std::string_view) { return std::string("---"); });
  for (const Row& row : results.rows()) {
    if (!group.empty() && row.group != group) continue;
    line(group.empty() ? row.group + ": " + row.name : row.name,
         [&](std::string_view contender) { return cell_text(row, contender); });
  }
}

std::string today() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::ostringstream text;
  text << std::put_time(std::gmtime(&now), "%Y-%m-%d");
  return text.str();
}

std::string file_text(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(path + " cannot be read");
  return {std::istreambuf_iterator<char>(file), {}};
}

void write_file(const std::string& path, const std::string& text) {
  std::ofstream file(path);
  file << text;
  file.close();
  if (!file) throw std::runtime_error(path + " cannot be written");
}

void put_into_readme(const std::string& path, const Results& results) {
  constexpr std::string_view kBegin = "<!-- bench -->\n";
  std::string text = file_text(path);
  const std::size_t begin = text.find(kBegin);
  const std::size_t end = text.find("<!-- /bench -->\n");
  if (begin == std::string::npos || end == std::string::npos)
    throw std::runtime_error(path + " has no place for it");
  std::ostringstream table;
  table << "Measured on " << today() << ":\n\n";
  print_table(table, results, "life");
  text.replace(begin + kBegin.size(), end - begin - kBegin.size(), table.str());
  write_file(path, text);
}

void report(const std::string& picture, const std::string& readme, char** first, char** last) {
  Results results;
  for (; first != last; ++first) results.read(*first);
  std::cout << "Of next_steps the time, of the others how many times as long they take; then the\n"
               "allocations and the most bytes held at once.\n\n";
  print_table(std::cout, results, "");
  std::ostringstream drawn;
  draw_picture(drawn, results);
  write_file(picture, drawn.str());
  put_into_readme(readme, results);
}

}  // namespace

}  // namespace vantrex::bench

int main(int argc, char** argv) {
  if (argc < 4) {
    std::cerr << "usage: bench_report PICTURE README RESULTS...\n";
    return 2;
  }
  try {
    vantrex::bench::report(argv[1], argv[2], argv + 3, argv + argc);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "bench_report: " << error.what() << '\n';
    return 1;
  }
}

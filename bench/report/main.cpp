// bench_report PICTURE RESULTS...: prints the tables of the RESULTS, files that
// the benchmarks wrote, and draws the PICTURE.
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "report/picture.h"
#include "report/results.h"
#include "report/tables.h"

namespace {

void report(const std::string& picture, char** first, char** last) {
  vantrex::bench::Results results;
  for (; first != last; ++first) results.read(*first);
  vantrex::bench::print_tables(std::cout, results);
  std::ofstream file(picture);
  vantrex::bench::draw_picture(file, results);
  file.close();
  if (!file) throw std::runtime_error(picture + " cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) {
    std::cerr << "usage: bench_report PICTURE RESULTS...\n";
    return 2;
  }
  try {
    report(argv[1], argv + 2, argv + argc);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "bench_report: " << error.what() << '\n';
    return 1;
  }
}

// Generated texts for the rows: names, prose and code, as long as those of a real tree.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace vantrex::bench {

// A random generator that gives the same numbers on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  std::size_t below(std::size_t bound) { return engine_() % bound; }
  std::int64_t number(std::size_t bound) { return static_cast<std::int64_t>(below(bound)); }
  bool one_in(std::size_t count) { return below(count) == 0; }
  double fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }

 private:
  std::mt19937_64 engine_;
};

std::string joined(std::initializer_list<std::string_view> texts);

std::string_view noun(Random& random);
std::string function_name(Random& random);                         // flush_segment
std::string class_name(Random& random);                            // SegmentWriter
std::string signature(Random& random, std::string_view function);  // def flush_segment(self, ...
std::string prose(Random& random, std::size_t sentences);          // some of them not ASCII
std::string code(Random& random, std::size_t bytes);               // with tabs, line feeds and quotes

}  // namespace vantrex::bench

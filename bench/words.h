// The words that the answers are made of: names, paths, prose and code of the
// lengths that those of a real tree have.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>

namespace vantrex::bench {

// The same numbers on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  std::size_t below(std::size_t bound) { return engine_() % bound; }
  bool one_in(std::size_t count) { return below(count) == 0; }
  double fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
  template <std::size_t kCount>
  std::string_view pick(const std::array<std::string_view, kCount>& texts) {
    return texts[below(kCount)];
  }

 private:
  std::mt19937_64 engine_;
};

std::string joined(std::initializer_list<std::string_view> texts);

std::string_view noun(Random& random);
std::string_view type_name(Random& random);
std::string_view symbol_kind(Random& random);
std::string function_name(Random& random);                         // flush_segment
std::string class_name(Random& random);                            // SegmentWriter
std::string file_path(Random& random);                             // src/acme/storage/index_cache.py
std::string signature(Random& random, std::string_view function);  // def flush_segment(self, ...
std::string_view sentence(Random& random);                         // some not in ASCII
std::string prose(Random& random, std::size_t sentences);
std::string code(Random& random, std::size_t bytes);  // with tabs, line feeds and quotes

}  // namespace vantrex::bench

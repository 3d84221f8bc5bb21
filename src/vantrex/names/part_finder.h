// PartFinder: finds one text in many others.
//
// Purpose: std::u32string_view::find takes time proportional to the product of both lengths when a text
// repeats itself; this takes time proportional to their sum. (Knuth, Morris, Pratt, "Fast pattern matching in
// strings", 1977.)
//
// Ownership: owns a copy of the text. Threads: safe for concurrent reads.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vantrex::names {

class PartFinder {
 public:
  // Throws std::bad_alloc.
  explicit PartFinder(std::u32string_view part);

  // The first position of the text in `whole`, or npos; npos for the empty text.
  std::size_t find_in(std::u32string_view whole) const noexcept;

 private:
  // With `matched` letters of the text found, but not all, the number that is found after one more letter.
  std::size_t after(std::size_t matched, char32_t next) const noexcept;

  std::u32string part_;
  // For each prefix of the text that is not empty: the size of its longest proper prefix that is a suffix,
  // too.
  std::vector<std::size_t> borders_;
};

}  // namespace vantrex::names

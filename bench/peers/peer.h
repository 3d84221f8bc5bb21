// What the peers have in common: the arithmetic that does not depend on how a
// library holds a value. The peers know beforehand which steps a request comes
// to and only take the arguments from the answer; they look neither for signals
// nor for repeats.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "contender.h"
#include "peers/string_size.h"

namespace vantrex::bench::peers {

// The text of the answer, for a peer to read, and that of its copy without null
// fields.
std::string answer_text(const Request& request);
std::string copy_text(const Request& request);

// Bytes of a value's compact text, and those of the hint fields in it.
struct Size {
  std::size_t text = 0;
  std::size_t hints = 0;
};

inline bool is_hint_key(std::string_view key) noexcept {
  if (key.size() < 3 || key.size() > 10) return false;
  switch (key.front()) {
    case 'h':
      return key == "hint" || key == "hints";
    case 'n':
      return key == "note" || key == "notes" || key == "next_steps";
    case 't':
      return key == "tip" || key == "tips";
    default:
      return false;
  }
}

// Bytes of an integer.
std::size_t integer_size(std::int64_t number) noexcept;

// How many of two steps stay beside an answer of `answer` bytes; the first
// always does.
std::size_t steps_that_fit(Size answer, std::size_t first, std::size_t second) noexcept;

// The reason of `step` in an answer that counts `total` hits.
std::string reason_of(const PlannedStep& step, std::int64_t total);

}  // namespace vantrex::bench::peers

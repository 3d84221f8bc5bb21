// Where a step that an answer may get comes from, and the verdict on it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vantrex::tool_handlers::next_steps {

/// Where a step comes from: the tool itself, or a row of a table.
enum class Source : std::uint8_t { own, signal, usual };

/// The verdict on a candidate step.
enum class Verdict : std::uint8_t {
  kept,        ///< the answer gets it
  not_served,  ///< the server does not have the call
  repeat,      ///< makes the same call as an earlier step
  over_cap,    ///< comes after MAX_STEPS other steps
  over_room    ///< with it, the hints are larger than their room
};

/// The verdict with its details.
struct Decision {
  Verdict verdict = Verdict::kept;  ///< kept, or why the step is dropped
  std::size_t repeated = 0;         ///< of a repeat: the position of the first step with its call, from 0
};

}  // namespace vantrex::tool_handlers::next_steps

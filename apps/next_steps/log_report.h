// What the log of the proxy says about a catalogue.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "next_steps/names.h"
#include "requests/members.h"
#include "vantrex/values/json_value.h"

namespace next_steps_program {

// Totals of lines. Its memory does not depend on their number: of more than kMaxRows rows and calls, the rest
// counts as one.
class LogReport {
 public:
  // Adds a line. Throws JsonError if it is none of a log, which then does not count, and std::bad_alloc.
  void add(std::string_view line);

  // Tables for people.
  std::string text() const;

  // {"answers", "without_steps", "bytes_before", "bytes_after", "null_bytes", "space_bytes", "hint_bytes",
  //  "rows": [{"row", "call", "offered", "kept", "followed", "calls_median", "never_followed"}]}
  // The median is null for a row that was not followed.
  values::JsonObject to_dict() const;

 private:
  static constexpr std::array kBytes = {"bytes_before", "bytes_after", "null_bytes", "space_bytes",
                                        "hint_bytes"};
  static constexpr std::size_t kMaxRows = 1000;
  static constexpr std::int64_t kMaxCalls = 100;  // more count as so many
  static constexpr std::int64_t kEnough = 100;    // offers of a row, to say that it is never followed

  using Key = std::pair<std::string, std::string>;  // a row of the catalogue, and a call that it makes
  struct Totals {
    std::int64_t offered = 0;
    std::int64_t kept = 0;
    std::int64_t followed = 0;
    std::map<std::int64_t, std::int64_t> followed_after = {};  // how often after so many calls
  };

  void add_answer(requests::Members& line);
  Totals& totals_of(Key key);

  std::int64_t answers_ = 0;
  std::int64_t without_steps_ = 0;
  std::array<std::int64_t, kBytes.size()> bytes_ = {};
  std::map<Key, Totals> rows_;
};

}  // namespace next_steps_program

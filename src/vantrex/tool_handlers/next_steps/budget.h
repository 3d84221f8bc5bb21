// The hint budget, which keeps hints a small part of every answer.
//
// The hints of an answer are its steps and all other hint fields, at any depth. Steps are dropped from the
// last one while the hints are larger than their room: a share of the answer's bytes, or a floor if that is
// more.
//
// All sizes are bytes of the compact JSON text. Pure functions. Throw only std::bad_alloc unless stated
// otherwise.
#pragma once

#include <cstddef>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/limits.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The bytes that the steps add to an answer besides their list: ,"next_steps":
inline constexpr std::size_t _STEPS_KEY_BYTES = std::string_view(R"(,"next_steps":)").size();
static_assert(_STEPS_KEY_BYTES == 14);

// The bytes of `value`.
std::size_t _encoded_size(const values::JsonValue& value);

// The bytes of the values of the hint fields in `value`, at any depth. A hint field inside another one is not
// counted again.
std::size_t _hint_size(const values::JsonValue& value);
// The same for an object.
std::size_t _hint_size(const values::JsonObject& object);

// The room: the bytes that the hints of an answer may take.
struct HintRoom {
  double bytes;
  bool is_floor;  // whether HINT_FLOOR_BYTES decides, not HINT_SHARE

  // The room in an answer of `answer_bytes`, which include the hints.
  explicit constexpr HintRoom(std::size_t answer_bytes) noexcept
      : bytes(HINT_SHARE * static_cast<double>(answer_bytes)), is_floor(bytes <= kFloor) {
    if (is_floor) bytes = kFloor;
  }

 private:
  static constexpr auto kFloor = static_cast<double>(HINT_FLOOR_BYTES);
};

// The bytes that `count` steps of `step_bytes` together add to an answer, with key, brackets and commas.
constexpr std::size_t added_bytes(std::size_t step_bytes, std::size_t count) noexcept {
  constexpr std::size_t kBrackets = 2;
  return count == 0 ? 0 : _STEPS_KEY_BYTES + kBrackets + step_bytes + (count - 1);
}

// The bytes of an answer and of its hints, before steps are added.
struct AnswerBytes {
  std::size_t all;
  std::size_t hints;

  // By how many bytes the hints and the `added` steps exceed their room; 0 or less if they fit.
  constexpr double over_room(std::size_t added) const noexcept {
    return static_cast<double>(hints + added) - HintRoom(all + added).bytes;
  }
};

// The number of leading steps that always stay.
struct Keep {
  std::size_t steps;
};

// The leading steps that fit the room beside the other hints of `response`, and at least the first `keep`.
// `response` has no field "next_steps". Linear in the size of the answer and the steps.
values::JsonList _within_share(const values::JsonObject& response, values::JsonList steps, Keep keep);

}  // namespace vantrex::tool_handlers::next_steps

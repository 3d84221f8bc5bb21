// The hint budget: hints are a small part of every answer.
//
// An answer's hints are its steps and every other hint field, at any depth.
// Steps are dropped from the last while the hints take more than a share of the
// answer's bytes, or more than a floor where that is more.
//
// All sizes are bytes of the compact JSON text. Pure functions: they change
// nothing they are given and may run on any thread; they throw only
// std::bad_alloc, unless they say more.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// Bytes that attaching the steps adds beside the list itself: ,"next_steps":
inline constexpr std::size_t _STEPS_KEY_BYTES = std::string_view(R"(,"next_steps":)").size();
static_assert(_STEPS_KEY_BYTES == 14);

// The bytes of `value`.
std::size_t _encoded_size(const values::JsonValue& value);

// The bytes of the values of the hint fields in `value`, at any depth. What
// lies inside a hint field counts once, with that field.
std::size_t _hint_size(const values::JsonValue& value);
std::size_t _hint_size(const values::JsonObject& object);

// What is called for each hint field that _hint_size counts: its path from the
// object, "results[3].note", and its value.
using HintVisitor = std::function<void(const std::string& path, const values::JsonValue& value)>;

// Visits the hint fields in `object` in their order. Throws std::bad_alloc and
// what `visit` throws.
void visit_hints(const values::JsonObject& object, const HintVisitor& visit);

// The bytes that the hints of an answer may take.
struct HintRoom {
  double bytes;
  bool is_floor;  // whether HINT_FLOOR_BYTES made it, not HINT_SHARE

  // The room in an answer of `answer_bytes`, hints included.
  explicit constexpr HintRoom(std::size_t answer_bytes) noexcept
      : bytes(HINT_SHARE * static_cast<double>(answer_bytes)), is_floor(bytes <= kFloor) {
    if (is_floor) bytes = kFloor;
  }

 private:
  static constexpr auto kFloor = static_cast<double>(HINT_FLOOR_BYTES);
};

// What the leading steps of a list add to an answer, key and brackets included.
class AddedBytes {
 public:
  // Of no step at all, which takes no key either.
  constexpr AddedBytes() noexcept = default;
  // Of all `steps`, which are some.
  explicit AddedBytes(const values::JsonList& steps);

  // Adds or takes back the last of the leading steps, of `step_bytes`.
  constexpr void add(std::size_t step_bytes) noexcept { step_bytes_ += step_bytes + kComma; }
  constexpr void take_back(std::size_t step_bytes) noexcept { step_bytes_ -= step_bytes + kComma; }

  constexpr std::size_t bytes() const noexcept {
    constexpr std::size_t kBrackets = 2;
    return step_bytes_ == 0 ? 0 : _STEPS_KEY_BYTES + kBrackets + step_bytes_ - kComma;
  }

 private:
  static constexpr std::size_t kComma = 1;

  std::size_t step_bytes_ = 0;  // each with a comma
};

// An answer's bytes and those of its hints, before steps are attached.
struct AnswerBytes {
  std::size_t all;
  std::size_t hints;

  // How many bytes the hints, with the steps' `added` bytes, are over their room;
  // 0 or less when they fit.
  constexpr double over_room(std::size_t added) const noexcept {
    return static_cast<double>(hints + added) - HintRoom(all + added).bytes;
  }
};

// How many leading steps are never dropped.
struct Keep {
  std::size_t steps;
};

// The leading steps of `steps` that fit the room beside the other hints of
// `response`, at least the first `keep` of them. `response` holds no
// "next_steps" field of its own. Takes time linear in the answer and the steps.
values::JsonList _within_share(const values::JsonObject& response, values::JsonList steps, Keep keep);

}  // namespace vantrex::tool_handlers::next_steps

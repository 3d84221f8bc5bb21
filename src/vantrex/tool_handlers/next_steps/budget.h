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

#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/values/json_value.h"
#include "vantrex/values/key_set.h"

namespace vantrex::tool_handlers::next_steps {

// HINT_KEYS, to be looked for in whole answers.
inline constexpr values::KeySet kHintKeys{HINT_KEYS};

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

// The bytes that the hints of an answer of `answer_bytes` may take.
constexpr double hint_room(std::size_t answer_bytes) noexcept {
  return std::max(HINT_SHARE * static_cast<double>(answer_bytes), static_cast<double>(HINT_FLOOR_BYTES));
}

// How many bytes `hint_bytes` of hints are over the room of an answer of
// `answer_bytes`, hints included; 0 or less when they fit.
constexpr double bytes_over_room(std::size_t hint_bytes, std::size_t answer_bytes) noexcept {
  return static_cast<double>(hint_bytes) - hint_room(answer_bytes);
}

// How many leading steps are never dropped.
struct Keep {
  std::size_t steps;
};

// The leading steps of `steps` that fit the room beside the other hints of
// `response`, at least the first `keep` of them. `response` holds no
// "next_steps" field of its own. Takes time linear in the answer and the steps.
values::JsonList _within_share(const values::JsonObject& response, values::JsonList steps, Keep keep);

}  // namespace vantrex::tool_handlers::next_steps

// The limits of an answer's steps and hints. The same for every server.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vantrex::tool_handlers::next_steps {

/// The maximum number of steps from signals and usual follow-ups together.
inline constexpr std::size_t MAX_STEPS = 3;

/// The share of an answer's bytes that its hint fields may take.
inline constexpr double HINT_SHARE = 0.15;

/// The minimum room for hints, in bytes.
inline constexpr std::size_t HINT_FLOOR_BYTES = 320;

/// The object fields that are hints, at any depth.
inline constexpr std::array<std::string_view, 7> HINT_KEYS = {"hint",  "hints", "next_steps", "note",
                                                              "notes", "tip",   "tips"};

/// The minimum number of callers or references for which a symbol's blast radius is worth a step.
inline constexpr std::int64_t FAN_IN_FOR_IMPACT = 8;

/// The maximum number of files in a step to recommended tests.
inline constexpr std::size_t MAX_STEP_FILES = 10;

}  // namespace vantrex::tool_handlers::next_steps

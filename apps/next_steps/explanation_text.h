// An explanation for a person to read.
#pragma once

#include <string>

#include "vantrex/tool_handlers/next_steps/explanation.h"

namespace next_steps_program {

// What to mark in colour, with the escape sequences of terminals.
enum class Colour { none, verdicts };

// The explanation as lines of text. Whatever the answer holds, it is printed
// without control characters. Throws std::bad_alloc.
std::string explanation_text(const vantrex::tool_handlers::next_steps::Explanation& explained, Colour colour);

}  // namespace next_steps_program

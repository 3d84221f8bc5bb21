// Formats an explanation for people.
#pragma once

#include <string>

#include "next_steps/names.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"

namespace next_steps_program {

// Whether verdicts are coloured, by the escape sequences of terminals.
enum class Colour { none, verdicts };

// Returns the explanation as lines of text. Control characters of the answer are escaped.
// Throws std::bad_alloc.
std::string explanation_text(const module::Explanation& explained, Colour colour);

}  // namespace next_steps_program

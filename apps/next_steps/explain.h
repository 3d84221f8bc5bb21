// Formats an explanation for people.
#pragma once

#include <string>

#include "next_steps/names.h"
#include "vantrex/tool_handlers/next_steps/explanation.h"

namespace next_steps_program {

// Returns the explanation as lines of text. Control characters of the answer are escaped. If `coloured`, the
// verdicts have the escape sequences of terminals around them. Throws std::bad_alloc.
std::string explanation_text(const module::Explanation& explained, bool coloured);

}  // namespace next_steps_program

// next_steps: finishes every answer before it goes to an agent.
//
// Purpose: the one header a tool handler includes. finish_answer drops an
// answer's null fields, adds the freshness block, and appends
// "next_steps": a few follow-up calls whose arguments come from the answer
// itself, within a byte budget. suggest_symbols and suggest_paths answer a miss
// with the nearest names the index holds.
//
// Ownership: an answer is taken by value. Given up with std::move it is finished in
// place; passed as it is, it is copied first and never changes. Threads: no state is
// kept and every table is constant, so any number of threads may call everything here
// at once, also on the same answer when none gives it up.
#pragma once

#include "vantrex/tool_handlers/next_steps/catalogue.h"    // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/finishing.h"    // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/suggestions.h"  // IWYU pragma: export

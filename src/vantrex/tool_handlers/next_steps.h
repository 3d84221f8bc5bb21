// next_steps: finishes every answer before it is sent to an agent.
//
// Purpose: the one header that a tool handler includes. finish_answer drops an answer's null fields, adds the
// freshness block, and appends "next_steps": a few follow-up calls whose arguments come from the answer,
// within a byte budget. suggest_symbols and suggest_paths answer a miss with the nearest names in the index.
// freshness_block makes that block, tool_result_text writes the answer, and explain_answer says why an answer
// gets its steps.
//
// Ownership: an answer is taken by value. Moved, it is finished in place; passed as an lvalue, it is copied
// and unchanged. Threads: there is no state and every table is constant, so all functions are safe for
// concurrent calls, also with the same lvalue.
#pragma once

#include "vantrex/tool_handlers/freshness.h"               // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/catalogue.h"    // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/explanation.h"  // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/finishing.h"    // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/follow_ups.h"   // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/limits.h"       // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/step.h"         // IWYU pragma: export
#include "vantrex/tool_handlers/next_steps/suggestions.h"  // IWYU pragma: export
#include "vantrex/tool_handlers/tool_result.h"             // IWYU pragma: export

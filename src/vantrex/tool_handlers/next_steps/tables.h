// The tables of the module and of a server's own catalogue.
//
// Constant data and pure functions.
#pragma once

#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/rules.h"

namespace vantrex::tool_handlers::next_steps {

// The tables of the module: NEXT_STEPS, _SIGNALS, _HIT_LISTS and the calls of a miss.
const Tables& module_tables() noexcept;

// The tables of `catalogue`, valid as long as it; those of the module for null.
const Tables& tables_of(const Catalogue* catalogue) noexcept;

}  // namespace vantrex::tool_handlers::next_steps

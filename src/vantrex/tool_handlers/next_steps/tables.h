// The tables of the module and of a server's own catalogue.
//
// Constant data and pure functions.
#pragma once

#include <algorithm>

#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/rules.h"

namespace vantrex::tool_handlers::next_steps {

// Whether all rows of a table have different keys.
template <typename Table>
constexpr bool has_unique_keys(const Table& table) noexcept {
  for (auto row = table.begin(); row != table.end(); ++row) {
    if (std::any_of(table.begin(), row, [&](const auto& other) { return other.key == row->key; }))
      return false;
  }
  return true;
}

// The tables of the module: NEXT_STEPS, _SIGNALS, _HIT_LISTS and the calls of a miss.
const Tables& module_tables() noexcept;

// The tables of `catalogue`, valid as long as it; those of the module for null.
const Tables& tables_of(const Catalogue* catalogue) noexcept;

}  // namespace vantrex::tool_handlers::next_steps

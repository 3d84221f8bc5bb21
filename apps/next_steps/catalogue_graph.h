// Draws the catalogue.
#pragma once

#include <string>

#include "next_steps/server_tables.h"

namespace next_steps_program {

// Returns an SVG document. The answers are on the left, and the calls that they lead to on
// the right. A dotted frame marks an answer or a call without a further step. Throws
// std::bad_alloc.
std::string catalogue_graph(const ServerTables& tables);

}  // namespace next_steps_program

// The catalogue as a picture.
#pragma once

#include <string>

#include "next_steps/server_tables.h"

namespace next_steps_program {

// An SVG document: on the left the answers, on the right the calls that they lead to. A
// frame with dots marks what leads no further. Throws std::bad_alloc.
std::string catalogue_graph(const ServerTables& tables);

}  // namespace next_steps_program

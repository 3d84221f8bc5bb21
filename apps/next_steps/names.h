// Short names of the namespaces that the program uses.
#pragma once

#include "requests/names.h"

namespace next_steps_program {

namespace models = vantrex::models;
namespace module = vantrex::tool_handlers::next_steps;
namespace requests = next_steps_requests;
namespace values = vantrex::values;

}  // namespace next_steps_program

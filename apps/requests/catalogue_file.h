// Reads a server's own catalogue.
#pragma once

#include <string>

#include "requests/names.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"

namespace next_steps_requests {

// Reads the catalogue in `file`, or standard input for "-". Throws InputRejected for text that is no JSON
// object, a repeated key and a wrong catalogue, IoFailed and std::bad_alloc.
module::Catalogue read_catalogue(const std::string& file);

}  // namespace next_steps_requests

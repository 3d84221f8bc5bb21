// Reads objects, and what is made of them, from the text of an input.
#pragma once

#include <string>
#include <string_view>

#include "requests/json_reader.h"
#include "requests/names.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"

namespace next_steps_requests {

// Reads the text of the input `source` like read_json_object. Throws InputRejected and std::bad_alloc.
values::JsonObject read_object(const std::string& source, std::string_view text, std::string_view what,
                               RepeatedKeys repeated = RepeatedKeys::replace);

// Reads the server's own catalogue in `file`, or standard input for "-". Throws InputRejected for text that
// is no JSON object, a repeated key and a wrong catalogue, IoFailed and std::bad_alloc.
module::Catalogue read_catalogue(const std::string& file);

}  // namespace next_steps_requests

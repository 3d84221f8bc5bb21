// Reads JSON text into values, for tables of tests.
#pragma once

#include <string>
#include <string_view>

#include "vantrex/values/json_value.h"

namespace vantrex::tests {

// The value that `text` writes: integers of any size stay integers, of repeated
// keys the last value stands at the first place. Throws std::invalid_argument
// for anything but one JSON document.
values::JsonValue parse(std::string_view text);
values::JsonObject parse_object(std::string_view text);

}  // namespace vantrex::tests

// The naive implementation of finishing, as literal as possible, to compare the module with.
//
// It shares with the module only the value type, the catalogue and is_code_symbol. It is slow.
#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "fuzz/support/random_tree.h"
#include "vantrex/values/json_value.h"

namespace vantrex::fuzz::naive {

// The compact JSON text of `value`. With `sorted`, the fields of every object are sorted by key.
std::string json_text(const values::JsonValue& value, bool sorted = false);

// The request as a line for `next-steps batch`.
std::string request_text(const Request& request);

// The bytes of the outermost hint fields of `value`, at any depth.
std::size_t hint_size(const values::JsonValue& value);

struct Finished {
  values::JsonObject answer;
  // The rules that decided something: "row search", "signal tests:for_file", "own steps", "dropped".
  std::set<std::string> reached;
};

// The finished answer to `request`. Recursive: for shallow answers only.
Finished finish(const Request& request);

}  // namespace vantrex::fuzz::naive

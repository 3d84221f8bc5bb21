// A second reading of the rules of finishing, as plain and literal as can be.
//
// It shares nothing with the module but the value type and its services, and
// takes whatever time and memory the plainest way takes. Where it and the
// module differ, one of them is wrong.
#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "fuzz/support/random_tree.h"
#include "vantrex/values/json_value.h"

namespace vantrex::fuzz::naive {

// The JSON text of `value`; with `sorted`, the fields of every object by key.
std::string json_text(const values::JsonValue& value, bool sorted = false);

// Bytes of the hint fields of `value` at any depth, but below other hint fields.
std::size_t hint_size(const values::JsonValue& value);

struct Finished {
  values::JsonObject answer;
  // The rules that decided something: "row search", "signal untested",
  // "scope base_branch", "own steps", "dropped" and so on.
  std::set<std::string> reached;
};

// The finished answer to `request`. Recurses as deep as the answer is.
Finished finish(const Request& request);

}  // namespace vantrex::fuzz::naive

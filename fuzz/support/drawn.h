// Counts what random values are made of, to tell whether every class came.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>

#include "vantrex/values/json_value.h"

namespace vantrex::fuzz {

// How often each class came, by its name.
using Counts = std::map<std::string, std::size_t>;

// The names of the classes that a test must come across: characters by their
// first byte and escapes by their offset, long and plain texts, each of strings
// and of keys; floats by their digits; objects that have an index.
std::set<std::string> every_class();

// Counts the classes in `value`.
void count_classes(const values::JsonValue& value, Counts& counts);

}  // namespace vantrex::fuzz

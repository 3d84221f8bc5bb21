// Texts whose hashes in the standard library are equal.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vantrex::growth {

// The first `count` of a fixed sequence of texts with one std::hash. Each is 16 printable ASCII characters
// without quotes and backslashes. Throws std::logic_error if the standard library hashes otherwise than
// libstdc++ on 64-bit machines.
std::vector<std::string> colliding_texts(std::size_t count);

}  // namespace vantrex::growth

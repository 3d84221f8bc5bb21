// Comparison of texts without regard to the case of ASCII letters. Pure functions that do not allocate.
#pragma once

#include <algorithm>
#include <string_view>

namespace vantrex::names {

constexpr char lower(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

constexpr bool same_but_for_case(std::string_view a, std::string_view b) noexcept {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char left, char right) { return lower(left) == lower(right); });
}

}  // namespace vantrex::names

// KeySet: a few field names that are looked for in whole answers.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "vantrex/values/text.h"

namespace vantrex::values {

// Immutable, made by the compiler of names that outlive it. Most other names are
// told from these by their size and first two letters alone.
class KeySet {
 public:
  // Each of `names` has at least two bytes and at most those that lie inside a Text.
  consteval explicit KeySet(std::span<const std::string_view> names) : names_(names) {
    for (const std::string_view name : names)
      initials_by_size_.at(name.size()) |= std::uint32_t{1} << place_of(name);
  }

  bool contains(const Text& key) const noexcept {
    detail::InlineText text;
    std::memcpy(&text, static_cast<const void*>(&key), sizeof text);
    const auto size = static_cast<std::size_t>(text.tag) - static_cast<std::size_t>(detail::Tag::inline_text);
    if (size >= initials_by_size_.size()) return false;  // a longer text, or no inline one
    const std::uint32_t bit = initials_by_size_[size] >> place_of({text.characters, 2}) & 1U;
    return bit != 0 && is_one(key.view());
  }

 private:
  bool is_one(std::string_view name) const noexcept;

  // Of the 32 bits of a size, the place of the one for the first letters of `name`.
  static constexpr std::uint32_t place_of(std::string_view name) noexcept {
    const auto first = static_cast<unsigned char>(name[0]);
    const auto second = static_cast<unsigned char>(name[1]);
    return (2U * first + second) % 32;
  }

  std::span<const std::string_view> names_;
  std::array<std::uint32_t, detail::kInlineCapacity + 1> initials_by_size_{};
};

}  // namespace vantrex::values

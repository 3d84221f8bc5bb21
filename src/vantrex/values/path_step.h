// PathStep: one step of a path into a value, a key or a position.
//
// Internal: at_path of the values makes them of what it is given.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/conversions.h"
#include "vantrex/values/integer.h"

namespace vantrex::values::detail {

class NEXT_STEPS_API PathStep {
 public:
  // NOLINTBEGIN(google-explicit-constructor): a key or a position is a step.
  template <StringLike Key>
  PathStep(const Key& key) noexcept : key_(key) {}
  PathStep(const Text& key) noexcept : key_(key.view()) {}
  template <CountingInteger Position>
  PathStep(Position position) noexcept
      : position_(std::in_range<std::size_t>(position) ? static_cast<std::size_t>(position) : kNone) {}
  PathStep(std::nullptr_t) = delete;
  // NOLINTEND(google-explicit-constructor)

  // What the step leads to in the list or the object, either of which may be null;
  // a null value where nothing is.
  const JsonValue& in(const JsonList* list, const JsonObject* object) const noexcept;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);  // no list has so many items

  std::optional<std::string_view> key_;
  std::size_t position_ = kNone;
};

}  // namespace vantrex::values::detail

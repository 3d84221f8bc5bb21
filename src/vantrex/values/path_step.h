// PathStep: one step of a path into a value.
//
// Internal: at_path converts its arguments to steps.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/conversions.h"
#include "vantrex/values/integer.h"

namespace vantrex::values::detail {

/// A key of an object or a position in a list.
class NEXT_STEPS_API PathStep {
 public:
  // NOLINTBEGIN(google-explicit-constructor): at_path takes keys and positions.
  /// A key.
  template <StringLike Key>
  PathStep(const Key& key) noexcept : key_(key) {}
  /// A key.
  PathStep(const Text& key) noexcept : key_(key.view()) {}
  /// A position. One that is negative or too large leads nowhere.
  template <CountingInteger Position>
  PathStep(Position position) noexcept
      : position_(std::in_range<std::size_t>(position) ? static_cast<std::size_t>(position) : kNone) {}
  PathStep(std::nullptr_t) = delete;
  // NOLINTEND(google-explicit-constructor)

  /// The value at this step in `list` or `object`, or a null value when absent. Either pointer may be null.
  const JsonValue& in(const JsonList* list, const JsonObject* object) const noexcept;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);  // greater than any list's size

  std::optional<std::string_view> key_;
  std::size_t position_ = kNone;
};

}  // namespace vantrex::values::detail

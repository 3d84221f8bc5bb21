// OptionalText: a text that may be absent, for named arguments.
//
// Unlike std::optional<std::string> it converts from nullptr and from a null const char*, which both mean
// absent. It owns its text, which may be any bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "vantrex/values/text.h"

namespace vantrex::tool_handlers::next_steps {

/// A text, or nothing.
class OptionalText {
 public:
  /// Absent.
  OptionalText() noexcept = default;
  // NOLINTBEGIN(google-explicit-constructor): a text or its absence.
  /// Absent.
  OptionalText(std::nullptr_t) noexcept {}
  /// Absent.
  OptionalText(std::nullopt_t /*absent*/) noexcept {}
  /// A copy of any string; absent for a null pointer. "" is a text, too.
  template <values::detail::StringLike T>
  OptionalText(const T& text) {
    if constexpr (std::is_pointer_v<T>) {
      if (text == nullptr) return;
    }
    text_ = values::detail::view_of(text);
  }
  /// The text itself; absent for an empty optional.
  OptionalText(std::optional<std::string> text) noexcept : text_(std::move(text)) {}
  /// A copy of the text; absent for an empty optional.
  OptionalText(std::optional<std::string_view> text) : text_(text) {}

  /// The text as a view, valid as long as this object.
  operator std::optional<std::string_view>() const& noexcept { return text_; }
  /// Deleted: the view would dangle.
  operator std::optional<std::string_view>() const&& = delete;
  // NOLINTEND(google-explicit-constructor)

 private:
  std::optional<std::string> text_;
};

}  // namespace vantrex::tool_handlers::next_steps

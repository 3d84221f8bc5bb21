// OptionalText: a borrowed text that may be absent, for named parameters.
//
// Unlike an optional view it takes nullptr for absent, also as the null
// pointer of a C string. It owns nothing: what it is made of must live as long
// as the call it is passed to.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantrex::tool_handlers::next_steps {

// A borrowed text, or its absence.
class OptionalText {
 public:
  // Absent.
  constexpr OptionalText() noexcept = default;
  // Absent for null and for an empty optional, else the text itself, "" included.
  // NOLINTBEGIN(google-explicit-constructor): a text or its absence.
  constexpr OptionalText(std::nullptr_t) noexcept {}
  constexpr OptionalText(std::nullopt_t /*absent*/) noexcept {}
  constexpr OptionalText(std::string_view text) noexcept : text_(text) {}
  constexpr OptionalText(const char* text) noexcept {
    if (text != nullptr) text_ = text;
  }
  OptionalText(const std::string& text) noexcept : text_(text) {}
  OptionalText(const std::optional<std::string>& text) noexcept {
    if (text) text_ = *text;
  }
  constexpr OptionalText(std::optional<std::string_view> text) noexcept : text_(text) {}

  // The text as a view, valid as long as what it was made of.
  constexpr operator std::optional<std::string_view>() const noexcept { return text_; }
  // NOLINTEND(google-explicit-constructor)

 private:
  std::optional<std::string_view> text_;
};

}  // namespace vantrex::tool_handlers::next_steps

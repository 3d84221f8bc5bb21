// OptionalText: a text that may be absent, for named parameters.
//
// Unlike an optional string it takes nullptr for absent, also as the null pointer
// of a C string. It owns its text, which may be any bytes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vantrex::tool_handlers::next_steps {

// A text, or its absence.
class OptionalText {
 public:
  // Absent.
  OptionalText() noexcept = default;
  // Absent for null and for an empty optional, else the text itself, "" included.
  // NOLINTBEGIN(google-explicit-constructor): a text or its absence.
  OptionalText(std::nullptr_t) noexcept {}
  OptionalText(std::nullopt_t /*absent*/) noexcept {}
  OptionalText(std::string_view text) : text_(text) {}
  OptionalText(std::string text) noexcept : text_(std::move(text)) {}
  OptionalText(const char* text) {
    if (text != nullptr) text_ = text;
  }
  OptionalText(std::optional<std::string> text) noexcept : text_(std::move(text)) {}
  OptionalText(std::optional<std::string_view> text) : text_(text) {}

  // The text as a view, valid as long as this object.
  operator std::optional<std::string_view>() const& noexcept { return text_; }
  operator std::optional<std::string_view>() const&& = delete;
  // NOLINTEND(google-explicit-constructor)

 private:
  std::optional<std::string> text_;
};

}  // namespace vantrex::tool_handlers::next_steps

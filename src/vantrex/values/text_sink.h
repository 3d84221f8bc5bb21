// What the compact text of a value is put into, and how its scalars are put.
//
// A sink takes plain bytes, numbers and the contents of strings that may need
// escaping. The text of an answer and the bytes that it would take come from the
// same calls on different sinks.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "vantrex/values/number_text.h"
#include "vantrex/values/value_access.h"

namespace vantrex::values::detail {

// The bytes of the compact text of a container that was measured when it was
// copied, else 0.
template <typename Container>
std::size_t measured_size(const Container& container) noexcept {
  const ContainerBlock* block = ValueAccess::block(container);
  return block == nullptr || block->arena == nullptr ? 0 : block->text_bytes;
}
inline std::size_t measured_size(const JsonValue& value) noexcept {
  const ContainerBlock* block = ValueAccess::is_container(value) ? ValueAccess::block(value) : nullptr;
  return block == nullptr || block->arena == nullptr ? 0 : block->text_bytes;
}

// Takes the number of the bytes alone.
class CountingSink {
 public:
  void put(char /*byte*/) noexcept { ++size_; }
  void put(std::string_view bytes) noexcept { size_ += bytes.size(); }
  void put_integer(std::int64_t value) noexcept { size_ += integer_text_size(value); }
  void put_float(double value) noexcept {
    NumberBuffer buffer;
    size_ += float_text(value, buffer).size();
  }
  void put_escaped(const Text& text) noexcept { size_ += text.size() + text.escape_gain(); }
  // Takes a whole list or object; false when it was not measured.
  bool put_measured(const JsonValue& container) noexcept {
    const std::size_t bytes = measured_size(container);
    size_ += bytes;
    return bytes != 0;
  }

  std::size_t size() const noexcept { return size_; }

 private:
  std::size_t size_ = 0;
};

// The bytes of the text of a list or an object of `size` > 0 items beside those
// of the items: the brackets, the commas, an object's colons.
constexpr std::size_t punctuation_size(std::size_t size, Tag kind) noexcept {
  constexpr std::size_t kBrackets = 2;
  const std::size_t commas = size - 1;
  return kBrackets + commas + (kind == Tag::object ? size : 0);
}

template <typename Sink>
void put_text(const Text& text, Sink& sink) {
  sink.put('"');
  sink.put_escaped(text);
  sink.put('"');
}

// Puts anything but a list or an object, and those only when `sink` can take
// them whole; false when it cannot.
template <typename Sink>
[[gnu::always_inline]] inline bool put_scalar(const JsonValue& value, Sink& sink) {
  switch (ValueAccess::tag(value)) {
    case Tag::list:
    case Tag::object:
      return sink.put_measured(value);
    case Tag::null:
      sink.put("null");
      break;
    case Tag::boolean:
      sink.put(*value.boolean() ? std::string_view("true") : std::string_view("false"));
      break;
    case Tag::integer:
      sink.put_integer(ValueAccess::small_integer(value));
      break;
    case Tag::big_integer:
      sink.put(ValueAccess::digits(value));
      break;
    case Tag::floating:
      sink.put_float(*value.floating());
      break;
    case Tag::foreign:
      put_text(value.foreign()->text_form(), sink);
      break;
    default:
      put_text(*value.text(), sink);
      break;
  }
  return true;
}

}  // namespace vantrex::values::detail

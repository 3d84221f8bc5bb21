// ValueAccess: access to private members for the files of this folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "vantrex/values/json_value.h"

namespace vantrex::values::detail {

struct ValueAccess {
  static Tag tag(const JsonValue& value) noexcept { return value.tag(); }
  static const TextBits& bits(const Text& text) noexcept { return text.bits_; }

  // The items of a container, null when it has no block, and their number.
  template <typename Item>
  static Item*& items(Container<Item>& container) noexcept {
    return container.items_;
  }
  template <typename Item>
  static std::uint32_t& size(Container<Item>& container) noexcept {
    return container.head_.size;
  }

  static std::int64_t small_integer(const JsonValue& value) noexcept { return value.integer_.small(); }
  // The digits of an integer outside the range of std::int64_t.
  static std::string_view digits(const JsonValue& value) noexcept { return value.integer_.bits_.view(); }
};

// Iterates over the items of a list or the values of an object's fields. A field is a key and a value of 16
// bytes each, so the stride in an object is two values. `Value` is JsonValue or const JsonValue.
template <typename Value>
class Values {
 public:
  Values() noexcept = default;  // leaves the members uninitialized, so that arrays cost nothing
  explicit Values(const Container<JsonValue>& list) noexcept
      : next_(first(list.begin())), left_(list.size()), stride_(1) {}
  explicit Values(const Container<JsonField>& object) noexcept
      : next_(object.empty() ? nullptr : first(&object.begin()->value)),
        left_(object.size()),
        stride_(sizeof(JsonField) / sizeof(JsonValue)) {}

  bool done() const noexcept { return left_ == 0; }
  Value& take() noexcept {
    --left_;
    return *std::exchange(next_, next_ + stride_);
  }

 private:
  // begin() returns a pointer to const. For a non-const `Value`, the container must not be const.
  static Value* first(const JsonValue* item) noexcept {
    return const_cast<Value*>(item);  // NOLINT(*-const-cast)
  }

  Value* next_;
  std::size_t left_;
  std::size_t stride_;
};
static_assert(sizeof(JsonField) == 2 * sizeof(JsonValue));

}  // namespace vantrex::values::detail

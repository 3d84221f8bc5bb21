// ForeignValue: a C++ object without a JSON form, carried unchanged in a value.
//
// Purpose: an answer can hold any object of the host, such as a time or a connection. Text output shows its
// text form, a JSON string.
//
// Ownership: copies share the object and the text form, which never change. The last copy destroys them.
// Threads: copies may be used on any thread; the object must be safe for concurrent reads.
#pragma once

#include <cstddef>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "vantrex/export.h"
#include "vantrex/values/text.h"

namespace vantrex::values {

/// A handle to a shared object and its text form. Never empty.
class NEXT_STEPS_API ForeignValue {
 public:
  /// Carries `object`, which is written as `text_form`. Ill-formed UTF-8 in it is replaced by U+FFFD. Throws
  /// std::bad_alloc, std::length_error for a text that is too long, and what moving T throws.
  template <typename T>
  static ForeignValue of(T object, std::string_view text_form) {
    return ForeignValue(new Holder<T>(std::move(object), Text::lossy(text_form)));
  }

  /// The object when its type is T, else a null pointer. Valid while any copy lives.
  template <typename T>
  const T* as() const& noexcept {
    return *box_->type == typeid(T) ? &static_cast<const Holder<std::remove_cv_t<T>>*>(box_)->object
                                    : nullptr;
  }
  template <typename T>
  const T* as() const&& = delete;

  /// The text form. Valid while any copy lives.
  const Text& text_form() const& noexcept { return box_->text_form; }
  const Text& text_form() const&& = delete;

  /// Shares the object.
  ForeignValue(const ForeignValue& other) noexcept;
  /// Shares the object.
  ForeignValue& operator=(const ForeignValue& other) noexcept {
    ForeignValue copy(other);
    std::swap(box_, copy.box_);
    return *this;
  }
  /// Destroys the object with its last copy.
  ~ForeignValue();

  /// Foreign values are equal when they share one object.
  friend bool operator==(const ForeignValue& a, const ForeignValue& b) noexcept { return a.box_ == b.box_; }

 private:
  struct Box {
    Box(const std::type_info& object_type, Text text) noexcept
        : type(&object_type), text_form(std::move(text)) {}
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;
    virtual ~Box() = default;

    std::size_t references = 1;
    const std::type_info* type;
    Text text_form;
  };
  template <typename T>
  struct Holder final : Box {
    Holder(T&& held, Text text) : Box(typeid(T), std::move(text)), object(std::move(held)) {}

    T object;
  };

  explicit ForeignValue(Box* box) noexcept : box_(box) {}

  Box* box_;
};

}  // namespace vantrex::values

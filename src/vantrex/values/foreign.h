// ForeignValue: a C++ object without a JSON form, carried unchanged in a value.
//
// Purpose: an answer can hold any object of the host, such as a time or a path. Text output shows its text
// form, a JSON string.
//
// Ownership: copies share the object and the text form, which never change. The last copy destroys them.
// Threads: copies may be used on any thread; the object must be safe for concurrent reads.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string_view>
#include <typeinfo>
#include <utility>

#include "vantrex/values/text.h"

namespace vantrex::values {

/// A handle to a shared object and its text form. Never empty.
class ForeignValue {
 public:
  /// Carries `object`, which is written as `text_form`. Ill-formed UTF-8 in it is replaced by U+FFFD. Throws
  /// std::bad_alloc, std::length_error for a text that is too long, and what moving T throws.
  template <typename T>
  static ForeignValue of(T object, std::string_view text_form) {
    return ForeignValue(std::make_shared<const T>(std::move(object)), typeid(T), Text::lossy(text_form));
  }

  /// The object when its type is T, else a null pointer. Valid while any copy lives.
  template <typename T>
  const T* as() const& noexcept {
    return *box_->type == typeid(T) ? static_cast<const T*>(box_->object.get()) : nullptr;
  }
  template <typename T>
  const T* as() const&& = delete;

  /// The text form. Valid while any copy lives.
  const Text& text_form() const& noexcept { return box_->text_form; }
  const Text& text_form() const&& = delete;

  /// Shares the object.
  ForeignValue(const ForeignValue& other) noexcept : box_(other.box_) { retain(box_); }
  /// Shares the object.
  ForeignValue& operator=(const ForeignValue& other) noexcept {
    ForeignValue copy(other);
    std::swap(box_, copy.box_);
    return *this;
  }
  /// Destroys the object with its last copy.
  ~ForeignValue() { release(box_); }

  /// Foreign values are equal when they share one object.
  friend bool operator==(const ForeignValue& a, const ForeignValue& b) noexcept { return a.box_ == b.box_; }

 private:
  struct Box {
    std::atomic<std::size_t> references;
    const std::type_info* type;
    std::shared_ptr<const void> object;
    Text text_form;
  };

  ForeignValue(std::shared_ptr<const void> object, const std::type_info& type, Text text_form)
      : box_(new Box{{1}, &type, std::move(object), std::move(text_form)}) {}

  static void retain(Box* box) noexcept { box->references.fetch_add(1, std::memory_order_relaxed); }
  static void release(Box* box) noexcept {
    if (box->references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete box;
  }

  Box* box_;
};

}  // namespace vantrex::values

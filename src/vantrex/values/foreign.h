// ForeignValue: a value that JSON has no form for, carried unchanged.
//
// Purpose: a tool may put any object of its own into an answer (a time, a
// path, a handle). It travels through the answer as it is and is written as a
// JSON string of its text form.
//
// Ownership: the object and its text form are immutable and shared by all
// copies; the last copy destroys them. Threads: copies may be used on any
// thread; the object itself must be safe for concurrent reads.
#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <string_view>
#include <typeinfo>
#include <utility>

#include "vantrex/values/text.h"

namespace vantrex::values {

// A handle of one shared object and its text form; never without one.
class ForeignValue {
 public:
  // Carries `object`. `text_form` is what every text of the answer shows for
  // it, taken here and now so that writing never calls out; ill-formed UTF-8
  // in it is replaced by U+FFFD. Throws std::bad_alloc and what moving T throws.
  template <typename T>
  static ForeignValue of(T object, std::string_view text_form) {
    return ForeignValue(std::make_shared<const T>(std::move(object)), typeid(T), Text::lossy(text_form));
  }

  // The carried object when it is a T, else null. It lives as long as any copy.
  template <typename T>
  const T* as() const& noexcept {
    return *box_->type == typeid(T) ? static_cast<const T*>(box_->object.get()) : nullptr;
  }
  template <typename T>
  const T* as() const&& = delete;

  // What is written for it, valid as long as any copy.
  const Text& text_form() const& noexcept { return box_->text_form; }
  const Text& text_form() const&& = delete;

  // Copies share the object and never fail.
  ForeignValue(const ForeignValue& other) noexcept : box_(other.box_) { retain(box_); }
  ForeignValue& operator=(const ForeignValue& other) noexcept {
    ForeignValue copy(other);
    std::swap(box_, copy.box_);
    return *this;
  }
  ~ForeignValue() { release(box_); }

  // Two foreign values are equal when they carry the very same object.
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

// The steps of an answer and their budget, for the general JSON libraries: the part that does not depend on a
// library's values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "life.h"

namespace vantrex::bench {

// A usual follow-up, or a signal's step.
struct Hint {
  std::string_view tool, action;
  std::string_view takes;  // "fqn" or "path"
  std::string_view reason;
  bool is_signal = false;  // needs 8 hits; its reason begins with their number
};

// The hints for the answers to `subject`.
std::span<const Hint> hints_of(const Subject& subject);

// Whether a field with this key is a hint field.
bool is_hint_key(std::string_view key) noexcept;

// The bytes of a string in compact text, with its quotes.
std::size_t string_size(std::string_view text) noexcept;
// The bytes of an integer in compact text.
std::size_t integer_size(std::int64_t number) noexcept;

struct Step {
  const Hint* hint = nullptr;
  std::string_view value;  // the argument's value
  std::string_view reason;
  std::size_t bytes = 0;  // the size of its compact text
};

// The steps of one answer. A step refers to the answer's texts and to this object.
class Steps {
 public:
  Steps() = default;
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  void clear() { count_ = 0; }
  void add(const Hint& hint, std::string_view value, std::int64_t hits);
  // Drops the last step until the rest fits an answer whose hint fields have `hints` bytes. Keeps the first.
  // `measure(enough)` returns the answer's bytes, or a smaller number that is at least `enough`. It is called
  // only when the result depends on it.
  template <typename Measure>
  void fit(std::size_t hints, Measure measure) {
    const std::size_t wanted = hints + added();
    if (count_ <= 1 || wanted <= kFloor) return;
    const std::size_t bytes = measure(wanted * 20 / 3 + 2);  // 0.15 of these bytes is `wanted`
    while (count_ > 1 && !fits(hints, bytes)) --count_;
  }

  const Step* begin() const { return steps_.data(); }
  const Step* end() const { return steps_.data() + count_; }
  std::size_t size() const { return count_; }

 private:
  static constexpr std::size_t kFloor = 320;

  // The bytes that the steps add to the answer.
  std::size_t added() const noexcept;
  bool fits(std::size_t hints, std::size_t bytes) const noexcept;

  std::array<Step, 3> steps_;
  std::size_t count_ = 0;
  std::string counted_reason_;
};

}  // namespace vantrex::bench

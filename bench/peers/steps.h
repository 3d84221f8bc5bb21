// The steps of an answer and their budget, as the general JSON libraries have
// them: what does not depend on how a library holds a value.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "life.h"

namespace vantrex::bench {

// A usual step of a tool and its action, or its signal.
struct Hint {
  std::string_view tool, action;
  std::string_view takes;  // fqn or path
  std::string_view reason;
  bool is_signal = false;  // at 8 hits or more, counted in its reason
};

// The hints for the answers to `subject`.
std::span<const Hint> hints_of(const Subject& subject);

// Whether the field `key` is a hint.
bool is_hint_key(std::string_view key) noexcept;

// The bytes of a string and of an integer in compact text.
std::size_t string_size(std::string_view text) noexcept;
std::size_t integer_size(std::int64_t number) noexcept;

struct Step {
  const Hint* hint = nullptr;
  std::string_view value;  // of its argument
  std::string_view reason;
  std::size_t bytes = 0;  // of its compact text
};

// The steps of one answer. They refer to the answer and to this object.
class Steps {
 public:
  Steps() = default;
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  void clear() { count_ = 0; }
  void add(const Hint& hint, std::string_view value, std::int64_t hits);
  // Drops steps from the last until the rest fits an answer whose hint fields take
  // `hints` bytes. `measure(enough)` gives the answer's bytes, or `enough` or more of
  // them; it is called only where they matter.
  template <typename Measure>
  void fit(std::size_t hints, Measure measure) {
    const std::size_t wanted = hints + added();
    if (count_ <= 1 || wanted <= kFloor) return;
    const std::size_t bytes = measure(wanted * 20 / 3 + 2);  // of which `wanted` is the share
    while (count_ > 1 && !fits(hints, bytes)) --count_;
  }

  const Step* begin() const { return steps_.data(); }
  const Step* end() const { return steps_.data() + count_; }
  std::size_t size() const { return count_; }

 private:
  static constexpr std::size_t kFloor = 320;

  std::size_t added() const noexcept;
  bool fits(std::size_t hints, std::size_t bytes) const noexcept;

  std::array<Step, 3> steps_;
  std::size_t count_ = 0;
  std::string counted_reason_;
};

}  // namespace vantrex::bench

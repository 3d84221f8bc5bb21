// WalkStack: the stack of a walk over a tree of values, in place of recursion. It allocates only beyond
// kShallow levels.
//
// Declare a walk as `Walk walk;`. `Walk()` would zero all frames first.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace vantrex::values {

template <typename Frame, std::size_t kShallow = 24>
class WalkStack {
 public:
  bool empty() const noexcept { return depth_ == 0; }
  std::size_t size() const noexcept { return depth_; }

  // The frame at `position`, counted from 0 at the bottom.
  const Frame& operator[](std::size_t position) const noexcept {
    return position < kShallow ? shallow_[position] : deep_[position - kShallow];
  }

  // The frame pushed last. A push or pop invalidates the reference.
  Frame& top() noexcept { return depth_ <= kShallow ? shallow_[depth_ - 1] : deep_.back(); }

  // Pushes Frame{parts...}.
  template <typename... Parts>
  void push(const Parts&... parts) {
    if (depth_ < kShallow) {
      shallow_[depth_] = Frame{parts...};
    } else {
      deep_.push_back(Frame{parts...});
    }
    ++depth_;
  }

  void pop() noexcept {
    if (depth_ > kShallow) deep_.pop_back();
    --depth_;
  }

 private:
  std::size_t depth_ = 0;
  std::array<Frame, kShallow> shallow_;  // only the first depth_ are initialized
  std::vector<Frame> deep_;
};

}  // namespace vantrex::values

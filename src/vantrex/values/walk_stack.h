// WalkStack: the explicit stack of a walk over a tree of values, so that no
// walk recurses. Shallow trees need no memory beyond the object itself.
//
// Declare a walk as `Walk walk;`: `Walk()` would first set all its frames to 0.
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

  // The frame that was pushed as the one at `position`, from 0.
  const Frame& operator[](std::size_t position) const noexcept {
    return position < kShallow ? shallow_[position] : deep_[position - kShallow];
  }

  // The frame pushed last; a push or pop invalidates the reference.
  Frame& top() noexcept { return depth_ <= kShallow ? shallow_[depth_ - 1] : deep_.back(); }

  // Pushes the frame of these parts, which are stored one by one where it lies.
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
  std::array<Frame, kShallow> shallow_;  // only the first depth_ frames are set
  std::vector<Frame> deep_;
};

}  // namespace vantrex::values

#include <bit>
#include <cmath>

#include "vantrex/values/json_value.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

namespace {

// Compares two trees side by side, container by container.
class EqualityWalk {
 public:
  bool equal(const JsonList& a, const JsonList& b) { return open(a, b) && finish(); }
  bool equal(const JsonObject& a, const JsonObject& b) { return open(a, b) && finish(); }
  bool equal(const JsonValue& a, const JsonValue& b) { return values_match(a, b) && finish(); }

 private:
  // What is left to compare of two containers of equal size.
  struct Frame {
    const JsonValue* items = nullptr;
    const JsonField* fields = nullptr;
    const JsonValue* other_items = nullptr;
    const JsonField* other_fields = nullptr;
    std::size_t left = 0;
  };

  bool open(const JsonList& a, const JsonList& b) {
    if (a.size() != b.size()) return false;
    if (a.begin() != b.begin()) walk_.push({a.begin(), nullptr, b.begin(), nullptr, a.size()});
    return true;
  }

  bool open(const JsonObject& a, const JsonObject& b) {
    if (a.size() != b.size()) return false;
    if (a.begin() != b.begin()) walk_.push({nullptr, a.begin(), nullptr, b.begin(), a.size()});
    return true;
  }

  bool finish() {
    while (!walk_.empty()) {
      Frame& frame = walk_.top();
      if (frame.left-- == 0) {
        walk_.pop();
      } else if (frame.items != nullptr) {
        if (!values_match(*frame.items++, *frame.other_items++)) return false;
      } else {
        const JsonField& field = *frame.fields++;
        const JsonField& other = *frame.other_fields++;
        if (field.key != other.key || !values_match(field.value, other.value)) return false;
      }
    }
    return true;
  }

  static bool floats_match(double a, double b) noexcept {
    return (std::isnan(a) && std::isnan(b)) ||
           std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
  }

  // Whether two values are equal but for what containers hold, which is put on
  // the stack.
  bool values_match(const JsonValue& a, const JsonValue& b) {
    if (a.kind() != b.kind()) return false;
    switch (a.kind()) {
      case Kind::null:
        return true;
      case Kind::boolean:
        return a.boolean() == b.boolean();
      case Kind::integer:
        return a.integer() == b.integer();
      case Kind::floating:
        return floats_match(*a.floating(), *b.floating());
      case Kind::string:
        return *a.text() == *b.text();
      case Kind::foreign:
        return *a.foreign() == *b.foreign();
      case Kind::list:
        return open(*a.list(), *b.list());
      case Kind::object:
        return open(*a.object(), *b.object());
    }
    return false;
  }

  WalkStack<Frame> walk_;
};

}  // namespace

bool operator==(const JsonList& a, const JsonList& b) {
  return EqualityWalk().equal(a, b);
}
bool operator==(const JsonObject& a, const JsonObject& b) {
  return EqualityWalk().equal(a, b);
}
bool operator==(const JsonValue& a, const JsonValue& b) {
  return EqualityWalk().equal(a, b);
}

}  // namespace vantrex::values

#include <algorithm>
#include <bit>
#include <cmath>

#include "vantrex/values/json_value.h"
#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

namespace {

using detail::Values;

bool same_float(double a, double b) noexcept {
  return (std::isnan(a) && std::isnan(b)) ||
         std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

// Compares two trees, container by container.
class EqualityWalk {
 public:
  template <typename T>
  bool equal(const T& a, const T& b) {
    if (!match(a, b)) return false;
    while (!walk_.empty()) {
      Level& level = walk_.top();
      if (level.values.done()) {
        walk_.pop();
      } else if (!match(level.values.take(), level.others.take())) {
        return false;
      }
    }
    return true;
  }

 private:
  // Two containers with equal sizes and keys, and the position up to which their values are equal.
  struct Level {
    Values<const JsonValue> values;
    Values<const JsonValue> others;
  };

  // Whether the two are equal, except for values inside containers. Those are pushed for comparison.
  bool match(const JsonList& a, const JsonList& b) {
    if (a.size() != b.size()) return false;
    walk_.push(Values<const JsonValue>(a), Values<const JsonValue>(b));
    return true;
  }
  bool match(const JsonObject& a, const JsonObject& b) {
    const auto same_key = [](const JsonField& field, const JsonField& other) {
      return field.key == other.key;
    };
    if (!std::equal(a.begin(), a.end(), b.begin(), b.end(), same_key)) return false;
    walk_.push(Values<const JsonValue>(a), Values<const JsonValue>(b));
    return true;
  }

  bool match(const JsonValue& a, const JsonValue& b) {
    if (a.kind() != b.kind()) return false;
    switch (a.kind()) {
      case Kind::null:
        return true;
      case Kind::boolean:
        return a.boolean() == b.boolean();
      case Kind::integer:
        return a.integer() == b.integer();
      case Kind::floating:
        return same_float(*a.floating(), *b.floating());
      case Kind::string:
        return *a.text() == *b.text();
      case Kind::foreign:
        return *a.foreign() == *b.foreign();
      case Kind::list:
        return match(*a.list(), *b.list());
      case Kind::object:
        return match(*a.object(), *b.object());
    }
    return false;
  }

  WalkStack<Level> walk_;
};

}  // namespace

bool JsonValue::equals_float(double other) const noexcept {
  return floating() && same_float(*floating(), other);
}

bool operator==(const JsonList& a, const JsonList& b) {
  EqualityWalk walk;
  return walk.equal(a, b);
}
bool operator==(const JsonObject& a, const JsonObject& b) {
  EqualityWalk walk;
  return walk.equal(a, b);
}
bool operator==(const JsonValue& a, const JsonValue& b) {
  EqualityWalk walk;
  return walk.equal(a, b);
}

}  // namespace vantrex::values

#include "vantrex/values/json_value.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <iterator>
#include <new>

#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

using detail::Tag;
using detail::Values;

namespace {

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

ForeignValue::ForeignValue(const ForeignValue& other) noexcept : box_(other.box_) {
  std::atomic_ref(box_->references).fetch_add(1, std::memory_order_relaxed);
}

ForeignValue::~ForeignValue() {
  if (std::atomic_ref(box_->references).fetch_sub(1, std::memory_order_acq_rel) == 1) delete box_;
}

void JsonValue::copy_from(const JsonValue& other) {
  switch (other.tag()) {
    case Tag::list:
      *this = JsonValue(JsonList(other.list_));
      break;
    case Tag::object:
      *this = JsonValue(JsonObject(other.object_));
      break;
    case Tag::foreign:
      new (&foreign_) Foreign(other.foreign_);
      break;
    case Tag::big_integer:
      new (&integer_) Integer(other.integer_);
      break;
    default:
      new (&text_) Text(other.text_);
      break;
  }
}

void JsonValue::dispose() noexcept {
  switch (tag()) {
    case Tag::list:
      list_.~JsonList();
      break;
    case Tag::object:
      object_.~JsonObject();
      break;
    case Tag::foreign:
      foreign_.~Foreign();
      break;
    case Tag::big_integer:
      integer_.~Integer();
      break;
    default:
      text_.~Text();
      break;
  }
}

Kind JsonValue::kind() const noexcept {
  // In the order of the tags up to big_integer; all later tags are those of strings.
  constexpr Kind kKinds[] = {Kind::null, Kind::boolean, Kind::integer, Kind::floating,
                             Kind::list, Kind::object,  Kind::foreign, Kind::integer};
  static_assert(std::size(kKinds) == static_cast<std::size_t>(Tag::shared_text));
  return detail::is_text(tag()) ? Kind::string : kKinds[static_cast<std::size_t>(tag())];
}

bool JsonValue::is_empty() const noexcept {
  switch (tag()) {
    case Tag::null:
      return true;
    case Tag::boolean:
      return !plain_.as.boolean;
    case Tag::integer:
      return integer_ == 0;
    case Tag::floating:
      return plain_.as.floating == 0.0;
    case Tag::list:
      return list_.empty();
    case Tag::object:
      return object_.empty();
    case Tag::foreign:
    case Tag::big_integer:
      return false;
    default:
      return text_.empty();
  }
}

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

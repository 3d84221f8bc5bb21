#include "vantrex/values/json_value.h"

#include <algorithm>
#include <atomic>
#include <bit>
#include <cmath>
#include <iterator>
#include <memory>

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
    if (a.list() != nullptr) return match(*a.list(), *b.list());
    if (a.object() != nullptr) return match(*a.object(), *b.object());
    if (a.text() != nullptr) return *a.text() == *b.text();
    if (a.floating()) return same_float(*a.floating(), *b.floating());
    if (a.foreign() != nullptr) return *a.foreign() == *b.foreign();
    return a.boolean() == b.boolean() && a.integer() == b.integer();
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

// Calls `visit` with the part of `value` that may own memory.
template <typename Value, typename Visit>
void JsonValue::visit_owner(Value& value, Visit visit) {
  switch (value.tag()) {
    case Tag::list:
      return visit(value.list_);
    case Tag::object:
      return visit(value.object_);
    case Tag::foreign:
      return visit(value.foreign_.value);
    case Tag::big_integer:
      return visit(value.integer_);
    default:
      return visit(value.text_);
  }
}

void JsonValue::copy_from(const JsonValue& other) {
  visit_owner(other, [this](const auto& owner) { *this = JsonValue(owner); });
}

void JsonValue::dispose() noexcept {
  visit_owner(*this, [](auto& owner) { std::destroy_at(&owner); });
}

Kind JsonValue::kind() const noexcept {
  // In the order of the tags up to big_integer; all later tags are those of strings.
  constexpr Kind kKinds[] = {Kind::null, Kind::boolean, Kind::integer, Kind::floating,
                             Kind::list, Kind::object,  Kind::foreign, Kind::integer};
  static_assert(std::size(kKinds) == static_cast<std::size_t>(Tag::shared_text));
  return detail::is_text(tag()) ? Kind::string : kKinds[static_cast<std::size_t>(tag())];
}

bool JsonValue::is_empty() const noexcept {
  return is_null() || boolean() == false || integer<std::int64_t>() == 0 || floating() == 0.0 ||
         string() == "" || (list() != nullptr && list()->empty()) ||
         (object() != nullptr && object()->empty());
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

#include "vantrex/values/json_value.h"

#include <utility>

#include "vantrex/values/snapshot.h"
#include "vantrex/values/value_access.h"

namespace vantrex::values {

using detail::Tag;

JsonValue::JsonValue(Integer value) noexcept : JsonValue(nullptr) {
  if (const auto small = value.to_int64()) {
    plain_.tag = Tag::integer;
    plain_.as.integer = *small;
    return;
  }
  detail::ValueAccess::place_big_integer(*this, std::move(value));
}

void JsonValue::swap(JsonValue& other) noexcept {
  JsonValue held(std::move(other));
  std::memcpy(static_cast<void*>(&other), static_cast<const void*>(this), sizeof(JsonValue));
  std::memcpy(static_cast<void*>(this), static_cast<const void*>(&held), sizeof(JsonValue));
  held.plain_.tag = Tag::null;
}

void JsonValue::copy_from(const JsonValue& other) {
  if (detail::ValueAccess::has_own_block(other)) {
    *this = snapshot(other, NullFields::keep);
  } else {
    detail::ValueAccess::place_uncounted(this, other);
    detail::ValueAccess::count(*this);
  }
}

void JsonValue::dispose() noexcept {
  switch (tag()) {
    case Tag::list:
      plain_.as.list.~JsonList();
      break;
    case Tag::object:
      plain_.as.object.~JsonObject();
      break;
    case Tag::foreign:
      plain_.as.foreign.~ForeignValue();
      break;
    default:  // a long text or the digits of a big integer
      detail::release(plain_.as.digits);
      break;
  }
}

Kind JsonValue::kind() const noexcept {
  switch (tag()) {
    case Tag::null:
      return Kind::null;
    case Tag::boolean:
      return Kind::boolean;
    case Tag::integer:
    case Tag::big_integer:
      return Kind::integer;
    case Tag::floating:
      return Kind::floating;
    case Tag::list:
      return Kind::list;
    case Tag::object:
      return Kind::object;
    case Tag::foreign:
      return Kind::foreign;
    default:
      return Kind::string;
  }
}

bool JsonValue::is_empty() const noexcept {
  switch (tag()) {
    case Tag::null:
      return true;
    case Tag::boolean:
      return !plain_.as.boolean;
    case Tag::integer:
      return plain_.as.integer == 0;
    case Tag::floating:
      return plain_.as.floating == 0.0;
    case Tag::list:
      return plain_.as.list.empty();
    case Tag::object:
      return plain_.as.object.empty();
    case Tag::foreign:
    case Tag::big_integer:
      return false;
    default:
      return text_.empty();
  }
}

std::optional<Integer> JsonValue::integer() const noexcept {
  switch (tag()) {
    case Tag::boolean:
      return Integer(plain_.as.boolean ? 1 : 0);
    case Tag::integer:
      return Integer(plain_.as.integer);
    case Tag::big_integer:
      return detail::ValueAccess::big_integer(*this);
    default:
      return std::nullopt;
  }
}

}  // namespace vantrex::values

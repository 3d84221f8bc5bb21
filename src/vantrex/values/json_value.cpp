#include "vantrex/values/json_value.h"

#include <new>
#include <utility>

#include "vantrex/values/value_access.h"

namespace vantrex::values {

using detail::Tag;

JsonValue::JsonValue(Integer value) noexcept : JsonValue(nullptr) {
  if (const auto small = value.to<std::int64_t>()) {
    plain_.tag = Tag::integer;
    plain_.as.integer = *small;
    return;
  }
  detail::ValueAccess::place_big_integer(*this, std::move(value));
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
      detail::ValueAccess::copy_big_integer(*this, other);
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
      detail::ValueAccess::release_big_integer(*this);
      break;
    default:
      text_.~Text();
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

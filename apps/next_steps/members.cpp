#include "next_steps/members.h"

#include <algorithm>
#include <utility>

#include "vantrex/values/text_forms.h"

namespace next_steps_program {

using values::JsonValue;
using values::Kind;

namespace {

std::string quoted(std::string_view key) {
  return values::compact_text(JsonValue(key));
}

}  // namespace

void Members::reject_others(std::span<const std::string_view> known) const {
  for (const MemberOffset& member : offsets_) {
    const std::string_view key = member.key.view();
    if (std::find(known.begin(), known.end(), key) == known.end()) {
      reject_at(member.offset, quoted(key) + " is no member of " + std::string(what_));
    }
  }
}

JsonValue& Members::required(std::string_view key, Kind kind, std::string_view expected) {
  JsonValue* value = object_.find(key);
  if (value == nullptr) reject_at(line_.find('{'), quoted(key) + " is missing");
  if (value->kind() != kind) {
    reject(key, "must be " + std::string(expected) + ", not " + std::string(kind_name(*value)));
  }
  return *value;
}

JsonValue* Members::optional(std::string_view key, Kind kind, std::string_view expected) {
  return std::as_const(object_)[key].is_null() ? nullptr : &required(key, kind, expected);
}

void Members::reject(std::string_view key, std::string_view message) const {
  const auto is_it = [&](const MemberOffset& member) { return member.key.view() == key; };
  const std::size_t offset = std::find_if(offsets_.rbegin(), offsets_.rend(), is_it)->offset;
  reject_at(offset, quoted(key) + " " + std::string(message));
}

void Members::reject_at(std::size_t offset, const std::string& message) const {
  throw JsonError(place_of(line_, offset), message);
}

}  // namespace next_steps_program

#include "requests/members.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "vantrex/workers/unknown_name.h"

namespace next_steps_requests {

using values::JsonValue;
using values::Kind;
using vantrex::workers::quoted;

Members::Members(std::string_view line, ObjectReading reading) : line_(line), read_(std::move(reading)) {
  if (read_.error) throw JsonError(*read_.error);
}

void Members::allow_only(Keys allowed, const std::string& what) const {
  const auto reject_key = [&](std::string_view key, std::size_t offset) {
    reject_at(offset, quoted(key) + " is no member of " + what);
  };
  if (read_.other.is_there()) reject_key(*read_.other.value.string(), read_.other.offset);
  auto field = read_.fields.begin();
  for (const std::string_view key : read_.keys) {
    const bool is_allowed = std::find(allowed.begin(), allowed.end(), key) != allowed.end();
    if (!is_allowed && field->is_there()) reject_key(key, field->offset);
    ++field;
  }
}

JsonValue& Members::required(std::string_view key, Kind kind) {
  Field& field = *read_.find(key);
  if (!field.is_there()) reject(quoted(key) + " is missing");
  if (field.value.kind() != kind) reject(key, wrong_kind(kind, "", field.value.kind()));
  return field.value;
}

JsonValue& Members::optional(std::string_view key, Kind kind) {
  JsonValue& value = read_.find(key)->value;
  if (!value.is_null() && value.kind() != kind) reject(key, wrong_kind(kind, " or null", value.kind()));
  return value;
}

void Members::reject(std::string_view key, std::string_view message) {
  reject_at(read_.find(key)->offset, quoted(key) + " " + std::string(message));
}

void Members::reject(const std::string& message) const {
  reject_at(line_.find('{'), message);
}

void Members::reject_at(std::size_t offset, const std::string& message) const {
  throw JsonError(place_of(line_, offset), message);
}

}  // namespace next_steps_requests

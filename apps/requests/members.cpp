#include "requests/members.h"

#include <algorithm>
#include <utility>

#include "vantrex/workers/unknown_name.h"

namespace next_steps_requests {

using values::JsonValue;
using values::Kind;
using vantrex::workers::quoted;

Members::Members(std::string_view line, std::string_view what, ObjectReading reading)
    : line_(line), what_(what), read_(std::move(reading)) {
  if (read_.error) throw JsonError(*read_.error);
}

void Members::reject_others(std::span<const std::string_view> known) const {
  for (const MemberOffset& member : read_.offsets) {
    const std::string_view key = member.key.view();
    if (std::find(known.begin(), known.end(), key) == known.end()) {
      reject_at(member.offset, quoted(key) + " is no member of " + std::string(what_));
    }
  }
}

JsonValue& Members::required(std::string_view key, Kind kind) {
  JsonValue* value = read_.object.find(key);
  if (value == nullptr) reject_at(line_.find('{'), quoted(key) + " is missing");
  check(key, kind, "");
  return *value;
}

JsonValue* Members::optional(std::string_view key, Kind kind) {
  JsonValue* value = read_.object.find(key);
  if (value == nullptr || value->is_null()) return nullptr;
  check(key, kind, " or null");
  return value;
}

void Members::check(std::string_view key, Kind kind, std::string_view or_null) const {
  const Kind found = read_.object[key].kind();
  if (found != kind) reject(key, wrong_kind(kind, or_null, found));
}

void Members::reject(std::string_view key, std::string_view message) const {
  const auto is_it = [&](const MemberOffset& member) { return member.key.view() == key; };
  const std::size_t offset = std::find_if(read_.offsets.rbegin(), read_.offsets.rend(), is_it)->offset;
  reject_at(offset, quoted(key) + " " + std::string(message));
}

void Members::reject_at(std::size_t offset, const std::string& message) const {
  throw JsonError(place_of(line_, offset), message);
}

}  // namespace next_steps_requests

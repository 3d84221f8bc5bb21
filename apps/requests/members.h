// The members of a line that must be a JSON object, with checks that report the place.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "requests/json_reader.h"
#include "requests/names.h"

namespace next_steps_requests {

// Ownership: borrows the line, which must outlive this object. Everything throws JsonError, with the place in
// the line, and std::bad_alloc.
class Members {
 public:
  // Reads the line. `what` names the object in messages: "a request".
  Members(std::string_view line, std::string_view what) : Members(line, what, read_members(line, what)) {}
  // The members that were read from the line, unless reading them failed.
  Members(std::string_view line, std::string_view what, ObjectReading reading);

  // Throws if there is a member that is not in `known`.
  void reject_others(std::span<const std::string_view> known) const;

  bool has(std::string_view key) const noexcept { return read_.object.contains(key); }

  // Returns the required member `key`, which must be of `kind`.
  values::JsonValue& required(std::string_view key, values::Kind kind);

  // Returns the optional member `key`, which must be of `kind`, or a null pointer if it is absent or null.
  values::JsonValue* optional(std::string_view key, values::Kind kind);

  // Throws with the place of the member `key`, which must be in the line, and "KEY MESSAGE".
  [[noreturn]] void reject(std::string_view key, std::string_view message) const;

 private:
  void check(std::string_view key, values::Kind kind, std::string_view or_null) const;
  [[noreturn]] void reject_at(std::size_t offset, const std::string& message) const;

  std::string_view line_;
  std::string_view what_;
  ObjectReading read_;
};

}  // namespace next_steps_requests

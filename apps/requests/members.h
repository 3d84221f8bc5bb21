// The members of a line that must be a JSON object, with checks that report the place.
#pragma once

#include <string>
#include <string_view>

#include "requests/json_reader.h"
#include "requests/names.h"

namespace next_steps_requests {

// Ownership: borrows the line and the keys, which must outlive this object. Everything throws JsonError, with
// the place in the line, and std::bad_alloc.
class Members {
 public:
  // Reads the members with `keys`. `what` names the object in messages: "a request".
  Members(std::string_view line, std::string_view what, Keys keys)
      : Members(line, read_fields(line, what, keys)) {}
  // The members that were read from the line, unless reading them failed.
  Members(std::string_view line, ObjectReading reading);

  // Throws if there is a member whose key is not in `allowed`. `what` names the object in the message.
  void allow_only(Keys allowed, const std::string& what) const;

  // In the following, `key` is one of those that were read.
  bool has(std::string_view key) { return read_.find(key)->is_there(); }

  // Returns the required member `key`, which must be of `kind`.
  values::JsonValue& required(std::string_view key, values::Kind kind);

  // Returns the required string `key`.
  std::string_view text(std::string_view key) { return *required(key, values::Kind::string).string(); }

  // Returns the optional member `key`, which must be of `kind`; null if it is absent.
  values::JsonValue& optional(std::string_view key, values::Kind kind);

  // Throws with the place of the member `key`, which must be in the line, and "KEY MESSAGE".
  [[noreturn]] void reject(std::string_view key, std::string_view message);
  // Throws with the place of the object.
  [[noreturn]] void reject(const std::string& message) const;

 private:
  [[noreturn]] void reject_at(std::size_t offset, const std::string& message) const;

  std::string_view line_;
  ObjectReading read_;
};

}  // namespace next_steps_requests

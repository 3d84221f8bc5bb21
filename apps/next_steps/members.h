// The members of a line that must be a JSON object, with checks that report the place.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "next_steps/json_reader.h"

namespace next_steps_program {

// Ownership: borrows the line, which must outlive this object. Everything throws
// JsonError, with the place in the line, and std::bad_alloc.
class Members {
 public:
  // `what` names the object in messages: "a request".
  Members(std::string_view line, std::string_view what)
      : line_(line), what_(what), object_(read_json_object(line, what, &offsets_)) {}

  // Throws if there is a member that is not in `known`.
  void reject_others(std::span<const std::string_view> known) const;

  bool has(std::string_view key) const noexcept { return object_.contains(key); }

  // Removes and returns the member `key`, or nothing if there is none.
  std::optional<values::JsonValue> take(std::string_view key) noexcept { return object_.remove(key); }

  // Returns the required member `key`, which must be of `kind`. `expected` names the kind in
  // the message: "an object".
  values::JsonValue& required(std::string_view key, values::Kind kind, std::string_view expected);

  // Returns the optional member `key`, or a null pointer if it is absent or null.
  values::JsonValue* optional(std::string_view key, values::Kind kind, std::string_view expected);

  // Throws with the place of the member `key`, which must be in the line, and "KEY MESSAGE".
  [[noreturn]] void reject(std::string_view key, std::string_view message) const;

 private:
  [[noreturn]] void reject_at(std::size_t offset, const std::string& message) const;

  std::string_view line_;
  std::string_view what_;
  std::vector<MemberOffset> offsets_;
  values::JsonObject object_;
};

}  // namespace next_steps_program

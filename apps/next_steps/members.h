// The members of a line that must hold one object, checked one by one.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "next_steps/json_reader.h"

namespace next_steps_program {

// Ownership: the line is borrowed and must outlive its Members. Whatever finds
// fault throws JsonError with the place in the line, and std::bad_alloc.
class Members {
 public:
  // `what` names the object in messages: "a request".
  Members(std::string_view line, std::string_view what)
      : line_(line), what_(what), object_(read_json_object(line, what, &offsets_)) {}

  // Refuses every member that is not in `known`.
  void refuse_others(std::span<const std::string_view> known) const;

  bool has(std::string_view key) const noexcept { return object_.contains(key); }

  // Takes the member `key` out, whatever it is; nothing when it is not there.
  std::optional<values::JsonValue> take(std::string_view key) noexcept { return object_.remove(key); }

  // The member `key`, which must be there and of `kind`; `expected` says so in
  // the message: "an object".
  values::JsonValue& wanted(std::string_view key, values::Kind kind, std::string_view expected);

  // The same for a member that may be absent or null, which gives null.
  values::JsonValue* allowed(std::string_view key, values::Kind kind, std::string_view expected);

  // Refuses the value of the member `key`: `message` says what it must be.
  [[noreturn]] void refuse(std::string_view key, std::string_view message) const;

 private:
  [[noreturn]] void reject(std::size_t offset, const std::string& message) const;

  std::string_view line_;
  std::string_view what_;
  std::vector<MemberOffset> offsets_;
  values::JsonObject object_;
};

}  // namespace next_steps_program

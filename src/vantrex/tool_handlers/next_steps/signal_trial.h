// What a signal wants of an answer, found by trying it.
//
// A signal is a plain function of what is known of an answer. The trial makes up an
// answer that it fires for; what it wants, and why it did not fire for an actual
// answer, come from changing that one. So the conditions stand in one place, the
// signals themselves.
//
// Threads: like an int. Everything throws only std::bad_alloc.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

class SignalTrial {
 public:
  explicit SignalTrial(const SignalRow& row);

  // The fewest hits that it fires for, and whether it fires for more, too.
  std::int64_t hits() const noexcept { return hits_; }
  bool takes_more_hits() const;
  // The fields that it wants beside the hits: "query", "fqn", "path".
  std::vector<std::string_view> fields() const;

  // Its step for the made-up answer, whose texts are in capitals: "QUERY".
  values::JsonObject step() const;

  // Why it does not fire for `known`: "12 hits, not 0", "7 callers, 8 are needed",
  // "no query". Empty when it fires.
  std::string lacks(const values::JsonObject& known) const;

 private:
  // Whether it fires for the made-up answer with another value of one field.
  bool fires_with(std::string_view field, const values::JsonValue& value) const;
  std::string lacking_hits(const values::JsonObject& known) const;

  const SignalRow& row_;
  values::JsonObject made_up_;
  std::int64_t hits_ = 0;
};

}  // namespace vantrex::tool_handlers::next_steps

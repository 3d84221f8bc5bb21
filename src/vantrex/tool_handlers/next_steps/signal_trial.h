// SignalTrial: the conditions of a signal, found by trying it.
//
// A signal is a plain function of what is known about an answer. The trial starts with made-up input for
// which the signal fires, and changes one field at a time. So the conditions are written in one place, the
// signals themselves.
//
// Threads: safe for concurrent reads. Throws only std::bad_alloc.
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

  // The minimum number of hits for which it fires.
  std::int64_t hits() const noexcept { return hits_; }
  // Whether it fires for more hits, too.
  bool takes_more_hits() const;
  // The fields that it needs besides the hits: "query", "fqn", "path".
  std::vector<std::string_view> fields() const;

  // Its step for the made-up input, whose texts are in capitals: "QUERY".
  values::JsonObject step() const;

  // Why it does not fire for `known`: "12 hits, not 0", "7 callers, 8 are needed", "no query". Empty if it
  // fires.
  std::string lacks(const values::JsonObject& known) const;

 private:
  // Whether it fires for the made-up input with `value` in one field.
  bool fires_with(std::string_view field, const values::JsonValue& value) const;
  std::string lacking_hits(const values::JsonObject& known) const;

  const SignalRow& row_;
  values::JsonObject made_up_;
  std::int64_t hits_ = 0;
};

}  // namespace vantrex::tool_handlers::next_steps

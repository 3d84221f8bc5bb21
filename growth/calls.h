// The calls whose growth is counted: all that read texts, names, answers or indexes of others.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "inputs.h"
#include "requests/reply.h"
#include "vantrex/values/json_value.h"

namespace vantrex::growth {

// What is counted. Owns its arguments.
using Work = std::function<void()>;

struct Call {
  Kind kind;
  const char* name;
  // Prepares the arguments from the text of an input. Throws if the text is not what its kind says.
  Work (*prepare)(const std::string& text);
};

// The calls on names and indexes.
std::span<const Call> name_calls();
// The calls on answers and lines.
std::span<const Call> answer_calls();

// Keeps the compiler from leaving out the computation of `result`.
template <typename Result>
void keep(const Result& result) {
  asm volatile("" : : "g"(&result) : "memory");
}

// Answers a line of a batch. Throws std::logic_error if the reply is an error.
void reply(const std::string& line, const next_steps_requests::ReplyContext& context);

}  // namespace vantrex::growth

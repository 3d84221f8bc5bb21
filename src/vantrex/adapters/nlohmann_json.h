// The bridge to nlohmann::ordered_json.
//
// Purpose: a tool handler that keeps its answers in nlohmann's JSON finishes
// them in one line, or takes values over and back. Header only and optional:
// the library itself neither includes this nor needs nlohmann's.
//
// What is carried: null, booleans, texts, lists, objects in the order of their
// fields, floats (NaN and the infinities too, which nlohmann writes as null),
// and integers that fit in 64 bits, signed or unsigned. A foreign value goes to
// nlohmann as its text form. Everything else is refused, and the error says
// where it stands. No depth is too much for the stack.
//
// Ownership: what is passed in stays the caller's; what is returned is new.
// Threads: pure functions without state; any number of threads may call them,
// also on the same value.
//
// Errors: NotConvertible and std::bad_alloc. To destroy a container nlohmann
// takes memory; where there is none even for that, it ends the program.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "vantrex/tool_handlers/next_steps/optional_text.h"
#include "vantrex/values/json_value.h"

namespace vantrex::adapters {

// Thrown for a value that the other side cannot hold. The message names it:
// "the answer at /results/3/size: ...".
class NotConvertible : public std::invalid_argument {
 public:
  // `whole` is what was to be converted, `path` the JSON pointer in it.
  NotConvertible(const std::string& whole, const values::Text& path, const std::string& why)
      : std::invalid_argument(whole + (path.empty() ? "" : " at ") + std::string(path.view()) + ": " + why),
        path_(path) {}

  // The JSON pointer to the value, "" for the whole.
  std::string_view path() const& noexcept { return path_.view(); }

 private:
  values::Text path_;
};

// nlohmann::ordered_json, and the other JSON types of nlohmann's that hold their
// scalars alike.
template <typename Json>
concept NlohmannJson =
    std::same_as<typename Json::string_t, std::string> && std::same_as<typename Json::boolean_t, bool> &&
    std::same_as<typename Json::number_integer_t, std::int64_t> &&
    std::same_as<typename Json::number_unsigned_t, std::uint64_t> &&
    std::same_as<typename Json::number_float_t, double>;

// The value that `json` holds. Of repeated keys the last value stands at the
// first place. Refuses ill-formed UTF-8, binary data and discarded values.
template <NlohmannJson Json>
values::JsonValue from_nlohmann(const Json& json);

// The same the other way. Refuses integers that do not fit in 64 bits.
template <NlohmannJson Json = nlohmann::ordered_json>
Json to_nlohmann(const values::JsonValue& value);

// What finish_answer is told beside the answer and the tool, by name.
struct FinishOptions {
  // The action that the tool ran; absent for a tool without actions.
  tool_handlers::next_steps::OptionalText action = nullptr;
  // The request's arguments, borrowed for the call; null when there were none.
  const nlohmann::ordered_json* arguments = nullptr;
  // The index's freshness block, as freshness_block gives it.
  values::JsonValue freshness = nullptr;
};

// The finished answer to a request, as next_steps::finish_answer makes it.
// Refuses, beside what the conversions do, an answer or arguments that are no
// objects.
nlohmann::ordered_json finish_answer(const nlohmann::ordered_json& response, std::string_view tool_name,
                                     FinishOptions options = {});
nlohmann::ordered_json finish_answer(const nlohmann::ordered_json& response, std::nullptr_t,
                                     FinishOptions options = {}) = delete;

}  // namespace vantrex::adapters

#include "vantrex/adapters/nlohmann_json_inl.h"

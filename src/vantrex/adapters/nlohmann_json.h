// Conversion to and from nlohmann::ordered_json.
//
// Purpose: a tool handler that keeps its answers in nlohmann's JSON type finishes them with one call, or
// converts values there and back. Optional and header-only: the library itself does not need nlohmann's.
//
// Converted: null, booleans, texts, lists, objects with the order of their fields, floats (also NaN and the
// infinities, which nlohmann writes as null), and integers of 64 bits, signed or unsigned. A foreign value
// becomes its text form. Other values are refused with an error that names their path. Not recursive: any
// depth is safe.
//
// Ownership: arguments are unchanged; results are new values. Threads: pure functions without state.
//
// Errors: NotConvertible and std::bad_alloc. nlohmann's destructors allocate; if that fails, the program
// ends.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/optional_text.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"
#include "vantrex/values/json_value.h"

namespace vantrex::adapters {

/// Thrown for a value that the other type cannot hold. The message names its path: "the answer at
/// /results/3/size: ...".
class NotConvertible : public std::invalid_argument {
 public:
  /// `whole` names the converted value, `path` is the JSON pointer in it.
  NotConvertible(const std::string& whole, const values::Text& path, const std::string& why)
      : std::invalid_argument(whole + (path.empty() ? "" : " at ") + std::string(path.view()) + ": " + why),
        path_(path) {}

  /// The JSON pointer to the value; "" for the converted value itself.
  std::string_view path() const& noexcept { return path_.view(); }

 private:
  values::Text path_;
};

/// nlohmann::ordered_json, or another of nlohmann's JSON types with the same scalar types.
template <typename Json>
concept NlohmannJson =
    std::same_as<typename Json::string_t, std::string> && std::same_as<typename Json::boolean_t, bool> &&
    std::same_as<typename Json::number_integer_t, std::int64_t> &&
    std::same_as<typename Json::number_unsigned_t, std::uint64_t> &&
    std::same_as<typename Json::number_float_t, double>;

/// The value of `json`. A repeated key keeps its first position and its last value. Refuses ill-formed UTF-8,
/// binary data and discarded values.
template <NlohmannJson Json>
values::JsonValue from_nlohmann(const Json& json);

/// `value` as a Json. Refuses integers that do not fit in 64 bits.
template <NlohmannJson Json = nlohmann::ordered_json>
Json to_nlohmann(const values::JsonValue& value);

/// The named arguments of finish_answer.
struct FinishOptions {
  /// The action that the tool ran; absent for a tool without actions.
  tool_handlers::next_steps::OptionalText action = nullptr;
  /// The request's arguments, borrowed for the call; null if there are none.
  const nlohmann::ordered_json* arguments = nullptr;
  /// The index's freshness block, as freshness_block returns it.
  values::JsonValue freshness = nullptr;
  /// The tools that the server has, borrowed for the call; null if it has every tool.
  const tool_handlers::next_steps::ServedTools* serves = nullptr;
  /// The server's own catalogue, borrowed for the call; null for the module's tables.
  const tool_handlers::next_steps::Catalogue* catalogue = nullptr;
};

/// The finished answer to a request, as next_steps::finish_answer returns it. Refuses what the conversions
/// refuse, and an answer or arguments that are not objects.
nlohmann::ordered_json finish_answer(const nlohmann::ordered_json& response, std::string_view tool_name,
                                     FinishOptions options = {});
/// A null pointer is not the name of a tool.
nlohmann::ordered_json finish_answer(const nlohmann::ordered_json& response, std::nullptr_t,
                                     FinishOptions options = {}) = delete;

}  // namespace vantrex::adapters

#include "vantrex/adapters/nlohmann_json_inl.h"

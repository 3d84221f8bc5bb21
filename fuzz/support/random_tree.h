// Random values and requests. The same seed gives the same ones on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "vantrex/tool_handlers/next_steps/finishing.h"
#include "vantrex/values/json_value.h"

namespace vantrex::fuzz {

// The tools and actions of a server, as texts ("search", "symbol:detail") and as the library's set.
struct Served {
  std::vector<std::string> names;
  tool_handlers::next_steps::ServedTools set;
};

// The arguments of one call of finish_answer.
struct Request {
  values::JsonObject answer;
  std::string tool;
  std::optional<std::string> action;
  std::optional<values::JsonObject> arguments;
  values::JsonValue freshness;
  std::optional<Served> serves = {};

  tool_handlers::next_steps::FinishOptions options() const {
    return {.action = action,
            .arguments = arguments ? &*arguments : nullptr,
            .freshness = freshness,
            .serves = serves ? &serves->set : nullptr};
  }
};

// The values to draw from: `json` excludes those that JSON text cannot hold (foreign values, infinities and
// NaN).
enum class Domain { json, any };

// A stream of random choices.
class Random {
 public:
  // The choices come from a seeded generator or from `draw`.
  explicit Random(std::uint64_t seed, Domain domain = Domain::any) : Random(std::mt19937_64(seed), domain) {}
  Random(std::function<std::uint64_t()> draw, Domain domain) : draw_(std::move(draw)), domain_(domain) {}

  std::size_t below(std::size_t bound) { return static_cast<std::size_t>(draw_() % bound); }
  // False for a draw of 0, so an exhausted stream adds nothing more.
  bool chance(std::size_t percent) { return below(100) >= 100 - percent; }
  template <typename T>
  T pick(std::initializer_list<T> items) {
    return items.begin()[below(items.size())];
  }

  // Runs of plain text of random lengths. Between them are UTF-8 sequences of any lead byte and characters
  // that JSON escapes.
  std::string text();

  // A value of at most `depth` levels, with hint fields and nulls.
  values::JsonValue value(std::size_t depth);

  // A request whose fields, counts, lists and sizes lie near the limits of the rules of finishing.
  Request request();

 private:
  std::string character();
  std::string name();
  std::string path();
  double decimal();
  values::JsonValue number();
  values::JsonValue phrase();
  values::JsonObject empty_or_wide();
  values::JsonObject fields(std::size_t depth);
  values::JsonObject hint_block();
  values::JsonValue hit();
  values::JsonList own_steps();
  values::JsonValue field_value(std::string_view key);
  Served served();
  values::JsonObject named_fields(std::size_t count, std::initializer_list<const char*> keys);

  std::function<std::uint64_t()> draw_;
  Domain domain_;
};

}  // namespace vantrex::fuzz

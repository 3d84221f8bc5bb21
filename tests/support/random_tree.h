// Random values and requests, the same for the same seed on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "vantrex/values/json_value.h"

namespace vantrex::tests {

// A source of choices: a seeded generator, or any other stream of numbers.
class Random {
 public:
  explicit Random(std::uint64_t seed) : draw_(std::mt19937_64(seed)) {}
  explicit Random(std::function<std::uint64_t()> draw) : draw_(std::move(draw)) {}

  std::size_t below(std::size_t bound) { return static_cast<std::size_t>(draw_() % bound); }
  bool chance(std::size_t percent) { return below(100) < percent; }
  template <typename Items>
  const auto& pick(const Items& items) {
    return items[below(std::size(items))];
  }

 private:
  std::function<std::uint64_t()> draw_;
};

// Which values may come: those that JSON text can hold, or also foreign values,
// infinities and NaN.
enum class Domain { json, any };

// Text with everything that is written in a way of its own.
std::string random_string(Random& random);

// A value of at most `depth` levels, with hint fields and nulls in it.
values::JsonValue random_value(Random& random, Domain domain, std::size_t depth = 4);

// What finish_answer is called with.
struct Request {
  values::JsonObject answer;
  std::string tool;
  std::optional<std::string> action;
  std::optional<values::JsonObject> arguments;
  values::JsonValue freshness;
};

// A request whose fields, counts, lists and sizes lie where the rules of
// finishing differ.
Request random_request(Random& random, Domain domain);

}  // namespace vantrex::tests

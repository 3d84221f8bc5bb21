// How the general JSON libraries finish an answer: what does not depend on how
// a library holds a value.
//
// Purpose: the steps are chosen by looking at the answer, and fitted to the
// budget, as next_steps does it. The short cuts are the peers' own: the hints of
// a tool and its action are at hand without a lookup, a taken value serves all
// steps, no step can repeat another, and an answer is measured only until its
// share is enough.
//
// A library is described by a struct `Json` of static functions:
//   find(object, key)      the field's value, or null
//   kind(value)            its Kind
//   text(value), integer(value), items(value), fields(value), object(value)
//   key(field), value(field)
//   float_size(value)      the bytes that it writes for a float
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "life.h"
#include "vantrex/models/symbol.h"

namespace vantrex::bench::peers {

enum class Kind { null, boolean, integer, floating, string, list, object };

// One usual step or signal of a tool and its action.
struct Hint {
  std::string_view tool, action;
  std::string_view takes;  // fqn or path
  std::string_view reason;
  bool is_signal = false;  // at 8 hits or more, counted in its reason
};

std::span<const Hint> hints_of(const Subject& subject);

bool is_hint_key(std::string_view key) noexcept;

// The bytes of a string and of an integer in compact text.
std::size_t string_size(std::string_view text) noexcept;
std::size_t integer_size(std::int64_t number) noexcept;

struct Step {
  const Hint* hint;
  std::string_view value;  // of the argument
  std::string_view reason;
  std::size_t bytes;  // of its compact text
};

// The steps of one answer. They refer to the answer, and to this object.
class Steps {
 public:
  Steps() = default;
  Steps(const Steps&) = delete;
  Steps& operator=(const Steps&) = delete;

  void add(const Hint& hint, std::string_view value, std::int64_t hits);
  // Drops steps from the last until the rest fits an answer with `hints` bytes of
  // hints. `measure(enough)` gives the answer's bytes, or `enough` or more of them.
  template <typename Measure>
  void fit(std::size_t hints, Measure measure) {
    const std::size_t wanted = hints + added();
    if (count_ <= 1 || wanted <= kFloor) return;
    const std::size_t bytes = measure(bytes_for(wanted));
    while (count_ > 1 && !fits(hints, bytes)) --count_;
  }

  const Step* begin() const { return steps_.data(); }
  const Step* end() const { return steps_.data() + count_; }
  std::size_t size() const { return count_; }

 private:
  static constexpr std::size_t kFloor = 320;

  std::size_t added() const noexcept;
  // The bytes of an answer whose share is `wanted`, and a few more.
  static std::size_t bytes_for(std::size_t wanted) noexcept { return wanted * 20 / 3 + 2; }
  bool fits(std::size_t hints, std::size_t bytes) const noexcept;

  std::array<Step, 3> steps_;
  std::size_t count_ = 0;
  std::string counted_reason_;
};

// The bytes of the compact text; where they are `enough` or more, at least
// `enough`.
template <typename Json, typename Value>
std::size_t size_of(const Value& value, std::size_t enough);

template <typename Json, typename Object>
std::size_t size_of_object(const Object& object, std::size_t enough) {
  std::size_t size = 1;
  for (const auto& field : Json::fields(object)) {
    if (size >= enough) return size;
    size += string_size(Json::key(field)) + 2;
    size += size_of<Json>(Json::value(field), enough > size ? enough - size : 0);
  }
  return size + (size == 1);
}

template <typename Json, typename Value>
std::size_t size_of(const Value& value, std::size_t enough) {
  switch (Json::kind(value)) {
    case Kind::null:
      return 4;
    case Kind::boolean:
      return Json::boolean(value) ? 4 : 5;
    case Kind::integer:
      return integer_size(Json::integer(value));
    case Kind::floating:
      return Json::float_size(value);
    case Kind::string:
      return string_size(Json::text(value));
    case Kind::list: {
      std::size_t size = 1;
      for (const auto& item : Json::items(value)) {
        if (size >= enough) return size;
        size += size_of<Json>(item, enough - size) + 1;
      }
      return size + (size == 1);
    }
    default:
      return size_of_object<Json>(Json::object(value), enough);
  }
}

inline constexpr std::array<std::string_view, 10> kHitLists = {
    "symbols",    "results",      "matches", "definitions", "callers",
    "references", "dead_symbols", "files",   "tests",       "components"};

template <typename Json, typename Object>
std::string_view text_field(const Object& object, std::string_view key) {
  const auto* value = Json::find(object, key);
  return value != nullptr && Json::kind(*value) == Kind::string ? Json::text(*value) : std::string_view();
}

template <typename Json, typename Object>
bool is_code(const Object& hit) {
  return models::is_code_symbol(text_field<Json>(hit, "kind"), text_field<Json>(hit, "file"));
}

// What a step takes from the answer, empty when there is nothing: the answer's
// own field, or that of its first hit that has it.
template <typename Json, typename Object>
std::string_view taken(const Object& answer, std::string_view takes) {
  const bool is_fqn = takes == "fqn";
  const std::string_view own = text_field<Json>(answer, is_fqn ? takes : "file");
  if (!own.empty()) return own;
  for (const std::string_view name : kHitLists) {
    const auto* list = Json::find(answer, name);
    if (list == nullptr || Json::kind(*list) != Kind::list) continue;
    for (const auto& item : Json::items(*list)) {
      if (Json::kind(item) != Kind::object || (is_fqn && !is_code<Json>(Json::object(item)))) continue;
      const std::string_view text = text_field<Json>(Json::object(item), takes);
      if (!text.empty()) return text;
    }
  }
  return {};
}

// The hits that the answer counts; all answers here have such a field, or no hits.
template <typename Json, typename Object>
std::int64_t hit_count(const Object& answer) {
  const auto* count = Json::find(answer, "total_count");
  return count != nullptr && Json::kind(*count) == Kind::integer ? Json::integer(*count) : 1;
}

// Chooses the steps of an answer without null fields, whose hint fields take
// `hint_bytes`.
template <typename Json, typename Object>
void choose(Steps& steps, const Object& answer, std::span<const Hint> hints, std::size_t hint_bytes) {
  const std::int64_t hits = hit_count<Json>(answer);
  if (hits == 0) return;
  std::string_view takes, value;
  for (const Hint& hint : hints) {
    if (hint.is_signal && hits < 8) continue;
    if (hint.takes != takes) value = taken<Json>(answer, takes = hint.takes);
    if (!value.empty()) steps.add(hint, value, hits);
  }
  steps.fit(hint_bytes, [&](std::size_t enough) { return size_of_object<Json>(answer, enough); });
}

}  // namespace vantrex::bench::peers

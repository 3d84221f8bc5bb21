// An answer's life with a general JSON library.
//
// Steps are chosen from the answer and fitted to the budget, as next_steps does it. The peers take these
// short cuts:
//   - the hints of a tool and its action need no lookup;
//   - a value that one step takes is used for the next one, too;
//   - steps are not compared, because none repeats another;
//   - one walk drops null fields and adds up the hints;
//   - an answer is measured only until the steps are known to fit.
//
// A `Library` holds one answer in the library's memory. It has
//   - the types Value and Writer, and Writer::write(const Value&);
//   - build(rows), copy_from(answer), value(), and release(), which keeps the memory;
//   - to make values: single(scalar), object(capacity), list(capacity), add(object, key, value) and
//     push(list, value);
//   - static functions to read them: kind, boolean, integer, text_of, float_size, items, fields,
//     find(object, key), key_of(field), value_of(field) and erase(object, field).
#pragma once

#include <array>
#include <string_view>

#include "peers/fields.h"
#include "peers/steps.h"
#include "vantrex/models/symbol.h"

namespace vantrex::bench {

enum class Kind { null, boolean, integer, floating, string, list, object };

// Makes a library's values from rows.
template <typename Library>
struct Maker {
  Library& in;

  auto made(const auto& value) const { return in.single(value); }
  auto made(const Row auto& row) const {
    auto object = in.object(field_count(row));
    describe(row, [&](std::string_view key, const auto& value) { in.add(object, key, made(value)); });
    return object;
  }
  template <typename T>
  auto made(const std::vector<T>& items) const {
    auto list = in.list(items.size());
    for (const T& item : items) in.push(list, made(item));
    return list;
  }
  template <typename T>
  auto made(const std::optional<T>& value) const {
    return value ? made(*value) : made(nullptr);
  }
};

template <typename Library>
class Peer : public Contender {
 public:
  explicit Peer(const Subject& subject) : subject_(subject), hints_(hints_of(subject)) {}

  void build() override {
    std::visit([&](const auto& rows) { built_.build(rows); }, subject_.rows);
  }
  void finish() override { finish(built_); }
  void finish_kept() override {
    if (!copy_) copy_.emplace();
    copy_->copy_from(built_);
    finish(*copy_);
  }
  void write() override { text_ = writer_.write(*finished_); }
  void destroy() override {
    built_.release();
    if (copy_) copy_->release();
  }
  std::string_view text() const override { return text_; }

 private:
  using Value = typename Library::Value;

  void finish(Library& answer) {
    Value& value = answer.value();
    finished_ = &value;
    steps_.clear();
    choose(value, drop_nulls(value));
    if (steps_.size() == 0) return;
    auto list = answer.list(steps_.size());
    for (const Step& step : steps_) answer.push(list, step_value(answer, step));
    answer.add(value, "next_steps", std::move(list));
  }

  static auto step_value(Library& in, const Step& step) {
    auto args = in.object(2);
    in.add(args, "action", in.single(step.hint->action));
    in.add(args, step.hint->takes, in.single(step.value));
    auto object = in.object(3);
    in.add(object, "tool", in.single(step.hint->tool));
    in.add(object, "args", std::move(args));
    in.add(object, "reason", in.single(step.reason));
    return object;
  }

  // Drops null fields in place, the last first, so that fewer fields move. Returns the bytes of the hint
  // fields.
  static std::size_t drop_nulls(Value& value) {
    std::size_t hints = 0;
    const Kind kind = Library::kind(value);
    if (kind == Kind::list) {
      for (Value& item : Library::items(value)) hints += drop_nulls(item);
    }
    if (kind != Kind::object) return hints;
    auto&& fields = Library::fields(value);
    for (auto left = fields.end() - fields.begin(); left > 0; --left) {
      const auto field = fields.begin() + (left - 1);
      Value& inner = Library::value_of(*field);
      if (Library::kind(inner) == Kind::null) {
        Library::erase(value, field);
        continue;
      }
      const std::size_t deeper = drop_nulls(inner);
      hints += is_hint_key(Library::key_of(*field)) ? size_of(inner, SIZE_MAX) : deeper;
    }
    return hints;
  }

  // The bytes of the compact text. Stops counting at `enough`, so the result for a larger text is `enough` or
  // more.
  static std::size_t size_of(const Value& value, std::size_t enough) {
    switch (Library::kind(value)) {
      case Kind::null:
        return 4;
      case Kind::boolean:
        return Library::boolean(value) ? 4 : 5;
      case Kind::integer:
        return integer_size(Library::integer(value));
      case Kind::floating:
        return Library::float_size(value);
      case Kind::string:
        return string_size(Library::text_of(value));
      default:
        break;
    }
    std::size_t size = 1;
    const auto left = [&] { return enough > size ? enough - size : 0; };
    if (Library::kind(value) == Kind::list) {
      for (const auto& item : Library::items(value)) {
        if (left() == 0) break;
        size += size_of(item, left()) + 1;
      }
    } else {
      for (const auto& field : Library::fields(value)) {
        if (left() == 0) break;
        size += string_size(Library::key_of(field)) + 2;
        size += size_of(Library::value_of(field), left());
      }
    }
    return size + (size == 1);
  }

  static std::string_view text_field(const Value& object, std::string_view key) {
    const Value* value = Library::find(object, key);
    return value != nullptr && Library::kind(*value) == Kind::string ? Library::text_of(*value) : "";
  }

  static bool is_code(const Value& hit) {
    return models::is_code_symbol(text_field(hit, "kind"), text_field(hit, "file"));
  }

  // The value of the argument `takes`: the answer's own field, or else the field of the first hit that has
  // it. Empty when there is none.
  static std::string_view taken(const Value& answer, std::string_view takes) {
    constexpr std::array<std::string_view, 10> kHitLists = {
        "symbols",    "results",      "matches", "definitions", "callers",
        "references", "dead_symbols", "files",   "tests",       "components"};
    const bool is_fqn = takes == "fqn";
    const std::string_view own = text_field(answer, is_fqn ? "fqn" : "file");
    if (!own.empty()) return own;
    for (const std::string_view name : kHitLists) {
      const Value* list = Library::find(answer, name);
      if (list == nullptr || Library::kind(*list) != Kind::list) continue;
      for (const Value& item : Library::items(*list)) {
        if (Library::kind(item) != Kind::object || (is_fqn && !is_code(item))) continue;
        const std::string_view text = text_field(item, takes);
        if (!text.empty()) return text;
      }
    }
    return {};
  }

  // Chooses the steps of an answer whose hint fields have `hint_bytes` bytes.
  void choose(const Value& answer, std::size_t hint_bytes) {
    const Value* count = Library::find(answer, "total_count");
    const std::int64_t hits = count == nullptr ? 1 : Library::integer(*count);
    if (hits == 0) return;
    std::string_view takes, value;
    for (const Hint& hint : hints_) {
      if (hint.is_signal && hits < 8) continue;
      if (hint.takes != takes) value = taken(answer, takes = hint.takes);
      if (!value.empty()) steps_.add(hint, value, hits);
    }
    steps_.fit(hint_bytes, [&](std::size_t enough) { return size_of(answer, enough); });
  }

  const Subject& subject_;
  const std::span<const Hint> hints_;
  Library built_;
  std::optional<Library> copy_;  // made by the first finish_kept
  const Value* finished_ = nullptr;
  Steps steps_;
  typename Library::Writer writer_;
  std::string_view text_;  // owned by writer_
};

}  // namespace vantrex::bench

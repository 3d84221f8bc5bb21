// The life on Boost.JSON: a monotonic resource for every answer, its first block
// kept between lives. Nothing in it is destroyed one by one.
#include <array>
#include <optional>
#include <vector>

#include <boost/json/src.hpp>

#include "peers/fields.h"
#include "peers/finishing.h"

namespace vantrex::bench {

namespace {

namespace json = boost::json;

constexpr std::size_t kFirstBlock = std::size_t{64} << 10;

json::string_view text_of(std::string_view text) {
  return {text.data(), text.size()};
}
std::string_view text_of(json::string_view text) {
  return {text.data(), text.size()};
}

// Makes values of rows, in one memory.
struct Builder {
  json::storage_ptr memory;

  json::value made(std::nullptr_t) const { return json::value(nullptr, memory); }
  json::value made(std::same_as<bool> auto value) const { return json::value(value, memory); }
  json::value made(std::int64_t number) const { return json::value(number, memory); }
  json::value made(double number) const { return json::value(number, memory); }
  json::value made(std::string_view text) const { return json::value(text_of(text), memory); }
  template <typename T>
  json::value made(const std::optional<T>& value) const {
    return value ? made(*value) : made(nullptr);
  }
  template <typename T>
  json::value made(const std::vector<T>& items) const {
    json::array list(memory);
    list.reserve(items.size());
    for (const T& item : items) list.emplace_back(made(item));
    return list;
  }
  template <Row T>
  json::object made(const T& row) const {
    json::object object(field_count(row), memory);
    describe(row,
             [&](std::string_view key, const auto& value) { object.emplace(text_of(key), made(value)); });
    return object;
  }
};

// How the peers' finishing reads a value.
struct Json {
  static const json::value* find(const json::object& object, std::string_view key) {
    return object.if_contains(text_of(key));
  }
  static peers::Kind kind(const json::value& value) {
    using peers::Kind;
    constexpr std::array kKinds = {Kind::null,     Kind::boolean, Kind::integer, Kind::integer,
                                   Kind::floating, Kind::string,  Kind::list,    Kind::object};
    return kKinds[static_cast<std::size_t>(value.kind())];
  }
  static bool boolean(const json::value& value) { return value.get_bool(); }
  static std::int64_t integer(const json::value& value) { return value.get_int64(); }
  static std::string_view text(const json::value& value) {
    return text_of(json::string_view(value.get_string()));
  }
  static const json::array& items(const json::value& value) { return value.get_array(); }
  static const json::object& object(const json::value& value) { return value.get_object(); }
  static const json::object& fields(const json::object& object) { return object; }
  static std::string_view key(const json::key_value_pair& field) { return text_of(field.key()); }
  static const json::value& value(const json::key_value_pair& field) { return field.value(); }
  static std::size_t float_size(const json::value& value) { return json::serialize(value).size(); }
};

std::size_t drop_nulls(json::object& object);

// Drops null fields in place. Returns the bytes of the hint fields.
std::size_t drop_nulls(json::value& value) {
  if (json::object* object = value.if_object()) return drop_nulls(*object);
  std::size_t hints = 0;
  if (json::array* list = value.if_array()) {
    for (json::value& item : *list) hints += drop_nulls(item);
  }
  return hints;
}

std::size_t drop_nulls(json::object& object) {
  std::size_t hints = 0;
  // From the last, so that fewer move.
  for (auto field = object.end(); field != object.begin();) {
    --field;
    if (field->value().is_null()) {
      field = object.stable_erase(field);
      continue;
    }
    const std::size_t inner = drop_nulls(field->value());
    hints += peers::is_hint_key(Json::key(*field)) ? peers::size_of<Json>(field->value(), SIZE_MAX) : inner;
  }
  return hints;
}

json::object step_of(const peers::Step& step, const json::storage_ptr& memory) {
  json::object args(2, memory);
  args.emplace("action", text_of(step.hint->action));
  args.emplace(text_of(step.hint->takes), text_of(step.value));
  json::object made(3, memory);
  made.emplace("tool", text_of(step.hint->tool));
  made.emplace("args", std::move(args));
  made.emplace("reason", text_of(step.reason));
  return made;
}

// A monotonic resource whose first block is kept, and the answer in it. A resource
// serves one life: it would make its further blocks larger with every release.
struct Memory {
  std::vector<unsigned char> first_block;
  std::optional<json::monotonic_resource> resource;
  std::optional<json::object> answer;

  json::storage_ptr begin() {
    if (first_block.empty()) first_block.resize(kFirstBlock);
    return &resource.emplace(first_block.data(), first_block.size());
  }
  void release() {
    answer.reset();
    resource.reset();
  }
};

class BoostJsonPeer : public Contender {
 public:
  explicit BoostJsonPeer(const Subject& subject) : subject_(subject), hints_(peers::hints_of(subject)) {}

  void build() override {
    const Builder builder{built_.begin()};
    std::visit([&](const auto& rows) { built_.answer.emplace(builder.made(rows)); }, subject_.rows);
  }
  void finish() override { finish(*built_.answer); }
  void finish_kept() override { finish(copy_.answer.emplace(*built_.answer, copy_.begin())); }
  std::string_view write() override {
    serializer_.reset(finished_);
    std::size_t size = 0;
    while (!serializer_.done()) {
      if (text_.size() - size < kFirstBlock) text_.resize(2 * text_.size() + kFirstBlock);
      size += serializer_.read(text_.data() + size, text_.size() - size).size();
    }
    return std::string_view(text_).substr(0, size);
  }
  void destroy() override {
    built_.release();
    copy_.release();
  }

 private:
  void finish(json::object& answer) {
    finished_ = &answer;
    peers::Steps steps;
    const std::size_t hint_bytes = drop_nulls(answer);
    peers::choose<Json>(steps, answer, hints_, hint_bytes);
    if (steps.size() == 0) return;
    json::array list(answer.storage());
    list.reserve(steps.size());
    for (const peers::Step& step : steps) list.emplace_back(step_of(step, answer.storage()));
    answer.emplace("next_steps", std::move(list));
  }

  const Subject& subject_;
  const std::span<const peers::Hint> hints_;
  Memory built_;
  Memory copy_;
  const json::object* finished_ = nullptr;
  json::serializer serializer_;
  std::string text_;
};

}  // namespace

std::unique_ptr<Contender> boost_json_peer(const Subject& subject) {
  return std::make_unique<BoostJsonPeer>(subject);
}

}  // namespace vantrex::bench

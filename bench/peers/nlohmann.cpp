// The life on nlohmann's ordered_json. Its objects are vectors of fields, filled
// here without the search for an equal key.
#include <array>

#include <nlohmann/json.hpp>

#include "peers/fields.h"
#include "peers/finishing.h"

namespace vantrex::bench {

namespace {

using nlohmann::ordered_json;
using Object = ordered_json::object_t;
using List = ordered_json::array_t;

template <typename T>
ordered_json made(const T& value) {
  return value;
}
inline ordered_json made(std::string_view text) {
  return text;
}
template <Row T>
ordered_json made(const T& row);
template <typename T>
ordered_json made(const std::optional<T>& value) {
  return value ? made(*value) : ordered_json();
}
template <typename T>
ordered_json made(const std::vector<T>& items) {
  ordered_json list(ordered_json::value_t::array);
  auto& made_items = list.get_ref<List&>();
  made_items.reserve(items.size());
  for (const T& item : items) made_items.push_back(made(item));
  return list;
}
template <Row T>
ordered_json made(const T& row) {
  ordered_json object(ordered_json::value_t::object);
  auto& fields = object.get_ref<Object&>();
  fields.reserve(field_count(row));
  describe(row, [&](std::string_view key, const auto& value) { fields.emplace_back(key, made(value)); });
  return object;
}

// How the peers' finishing reads a value.
struct Json {
  static const ordered_json* find(const ordered_json& object, std::string_view key) {
    const auto field = object.find(key);
    return field == object.end() ? nullptr : &*field;
  }
  static peers::Kind kind(const ordered_json& value) {
    using peers::Kind;
    constexpr std::array kKinds = {Kind::null,    Kind::object,  Kind::list,    Kind::string,
                                   Kind::boolean, Kind::integer, Kind::integer, Kind::floating};
    return kKinds[static_cast<std::size_t>(value.type())];
  }
  static bool boolean(const ordered_json& value) { return value.get<bool>(); }
  static std::int64_t integer(const ordered_json& value) { return value.get<std::int64_t>(); }
  static std::string_view text(const ordered_json& value) { return value.get_ref<const std::string&>(); }
  static const List& items(const ordered_json& value) { return value.get_ref<const List&>(); }
  static const ordered_json& object(const ordered_json& value) { return value; }
  static const Object& fields(const ordered_json& value) { return value.get_ref<const Object&>(); }
  static std::string_view key(const Object::value_type& field) { return field.first; }
  static const ordered_json& value(const Object::value_type& field) { return field.second; }
  static std::size_t float_size(const ordered_json& value) { return value.dump().size(); }
};

// Drops null fields in place. Returns the bytes of the hint fields.
std::size_t drop_nulls(ordered_json& value) {
  std::size_t hints = 0;
  if (value.is_array()) {
    for (ordered_json& item : value.get_ref<List&>()) hints += drop_nulls(item);
  }
  if (!value.is_object()) return hints;
  auto& fields = value.get_ref<Object&>();
  // From the last, so that fewer move.
  for (auto field = fields.end(); field != fields.begin();) {
    --field;
    if (field->second.is_null()) {
      field = fields.erase(field);
      continue;
    }
    const std::size_t inner = drop_nulls(field->second);
    hints += peers::is_hint_key(field->first) ? peers::size_of<Json>(field->second, SIZE_MAX) : inner;
  }
  return hints;
}

ordered_json step_of(const peers::Step& step) {
  ordered_json args(ordered_json::value_t::object);
  auto& arguments = args.get_ref<Object&>();
  arguments.reserve(2);
  arguments.emplace_back("action", step.hint->action);
  arguments.emplace_back(step.hint->takes, step.value);
  ordered_json made(ordered_json::value_t::object);
  auto& fields = made.get_ref<Object&>();
  fields.reserve(3);
  fields.emplace_back("tool", step.hint->tool);
  fields.emplace_back("args", std::move(args));
  fields.emplace_back("reason", step.reason);
  return made;
}

// Growing by itself, the vector would copy all values, as their keys are constant.
void make_room(Object& fields) {
  Object larger;
  larger.reserve(fields.size() + 1);
  for (auto& [key, value] : fields) larger.emplace_back(key, std::move(value));
  fields.swap(larger);
}

class NlohmannPeer : public Contender {
 public:
  explicit NlohmannPeer(const Subject& subject) : subject_(subject), hints_(peers::hints_of(subject)) {}

  void build() override {
    answer_ = std::visit([](const auto& rows) { return made(rows); }, subject_.rows);
  }
  void finish() override { finish(answer_); }
  void finish_kept() override {
    copy_ = answer_;
    finish(copy_);
  }
  std::string_view write() override { return text_ = finished_->dump(); }
  void destroy() override {
    answer_ = nullptr;
    copy_ = nullptr;
    text_ = std::string();
  }

 private:
  void finish(ordered_json& answer) {
    finished_ = &answer;
    peers::Steps steps;
    const std::size_t hint_bytes = drop_nulls(answer);
    peers::choose<Json>(steps, answer, hints_, hint_bytes);
    if (steps.size() == 0) return;
    ordered_json list(ordered_json::value_t::array);
    auto& items = list.get_ref<List&>();
    items.reserve(steps.size());
    for (const peers::Step& step : steps) items.push_back(step_of(step));
    auto& fields = answer.get_ref<Object&>();
    if (fields.size() == fields.capacity()) make_room(fields);
    fields.emplace_back("next_steps", std::move(list));
  }

  const Subject& subject_;
  const std::span<const peers::Hint> hints_;
  ordered_json answer_;
  ordered_json copy_;
  const ordered_json* finished_ = nullptr;
  std::string text_;
};

}  // namespace

std::unique_ptr<Contender> nlohmann_peer(const Subject& subject) {
  return std::make_unique<NlohmannPeer>(subject);
}

}  // namespace vantrex::bench

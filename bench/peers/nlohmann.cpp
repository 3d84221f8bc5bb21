// The life with nlohmann::ordered_json. Its objects are vectors of fields. They are filled directly, which
// saves the search for an equal key.
#include <nlohmann/json.hpp>

#include "peers/peer.h"

namespace vantrex::bench {

namespace {

using nlohmann::ordered_json;

class Nlohmann {
 public:
  using Value = ordered_json;
  using Object = ordered_json::object_t;
  using List = ordered_json::array_t;
  struct Writer {
    std::string text;
    std::string_view write(const Value& value) { return text = value.dump(); }
  };

  void build(const auto& rows) { value_ = Maker<Nlohmann>{*this}.made(rows); }
  void copy_from(const Nlohmann& other) { value_ = other.value_; }
  Value& value() { return value_; }
  void release() { value_ = nullptr; }

  template <typename T>
  Value single(const T& value) {
    return value;
  }
  Value object(std::size_t capacity) {
    Value object(ordered_json::value_t::object);
    object.get_ref<Object&>().reserve(capacity);
    return object;
  }
  Value list(std::size_t capacity) {
    Value list(ordered_json::value_t::array);
    list.get_ref<List&>().reserve(capacity);
    return list;
  }
  // Grows the vector by moving the values. The vector would copy them, because their keys are constant.
  void add(Value& object, std::string_view key, Value value) {
    auto& fields = object.get_ref<Object&>();
    if (fields.size() == fields.capacity()) {
      Object larger;
      larger.reserve(fields.size() + 1);
      for (auto& field : fields) larger.emplace_back(field.first, std::move(field.second));
      fields.swap(larger);
    }
    fields.emplace_back(key, std::move(value));
  }
  void push(Value& list, Value value) { list.get_ref<List&>().push_back(std::move(value)); }

  static Kind kind(const Value& value) {
    constexpr std::array kKinds = {Kind::null,    Kind::object,  Kind::list,    Kind::string,
                                   Kind::boolean, Kind::integer, Kind::integer, Kind::floating};
    return kKinds[static_cast<std::size_t>(value.type())];
  }
  static bool boolean(const Value& value) { return value.get<bool>(); }
  static std::int64_t integer(const Value& value) { return value.get<std::int64_t>(); }
  static std::string_view text_of(const Value& value) { return value.get_ref<const std::string&>(); }
  static std::size_t float_size(const Value& value) { return value.dump().size(); }
  static const List& items(const Value& value) { return value.get_ref<const List&>(); }
  static List& items(Value& value) { return value.get_ref<List&>(); }
  static const Object& fields(const Value& value) { return value.get_ref<const Object&>(); }
  static Object& fields(Value& value) { return value.get_ref<Object&>(); }
  static const Value* find(const Value& object, std::string_view key) {
    const auto field = object.find(key);
    return field == object.end() ? nullptr : &*field;
  }
  static std::string_view key_of(const Object::value_type& field) { return field.first; }
  static auto& value_of(auto& field) { return field.second; }
  static void erase(Value& object, Object::iterator field) { fields(object).erase(field); }

 private:
  Value value_;
};

}  // namespace

std::unique_ptr<Contender> nlohmann_peer(const Subject& subject) {
  return std::make_unique<Peer<Nlohmann>>(subject);
}

}  // namespace vantrex::bench

// The life with Boost.JSON. Each answer lies in a monotonic resource, which frees all of it at once. The
// resource's first block is kept between lives.
#include <optional>

#include <boost/json/src.hpp>

#include "peers/peer.h"

namespace vantrex::bench {

namespace {

namespace json = boost::json;

constexpr std::size_t kFirstBlock = std::size_t{64} << 10;

json::string_view boost_text(std::string_view text) {
  return {text.data(), text.size()};
}

class BoostJson {
 public:
  using Value = json::value;
  struct Writer {
    json::serializer serializer;
    std::string text;

    std::string_view write(const Value& value) {
      serializer.reset(&value);
      std::size_t size = 0;
      while (!serializer.done()) {
        if (text.size() - size < kFirstBlock) text.resize(2 * text.size() + kFirstBlock);
        size += serializer.read(text.data() + size, text.size() - size).size();
      }
      return std::string_view(text).substr(0, size);
    }
  };

  void build(const auto& rows) {
    begin();
    value_.emplace(Maker<BoostJson>{*this}.made(rows));
  }
  void copy_from(const BoostJson& other) {
    begin();
    value_.emplace(*other.value_, memory_);
  }
  Value& value() { return *value_; }
  void release() {
    value_.reset();
    resource_.reset();
  }

  template <typename T>
  Value single(const T& value) {
    return Value(value, memory_);
  }
  Value single(std::string_view text) { return Value(boost_text(text), memory_); }
  Value single(const std::string& text) { return Value(boost_text(text), memory_); }
  json::object object(std::size_t capacity) { return json::object(capacity, memory_); }
  json::array list(std::size_t capacity) {
    json::array list(memory_);
    list.reserve(capacity);
    return list;
  }
  template <typename T>
  void add(json::object& object, std::string_view key, T value) {
    object.emplace(boost_text(key), std::move(value));
  }
  void add(Value& object, std::string_view key, json::array value) {
    add(object.get_object(), key, std::move(value));
  }
  template <typename T>
  void push(json::array& list, T value) {
    list.emplace_back(std::move(value));
  }

  static Kind kind(const Value& value) {
    constexpr std::array kKinds = {Kind::null,     Kind::boolean, Kind::integer, Kind::integer,
                                   Kind::floating, Kind::string,  Kind::list,    Kind::object};
    return kKinds[static_cast<std::size_t>(value.kind())];
  }
  static bool boolean(const Value& value) { return value.get_bool(); }
  static std::int64_t integer(const Value& value) { return value.get_int64(); }
  static std::string_view text_of(const Value& value) {
    return {value.get_string().data(), value.get_string().size()};
  }
  static std::size_t float_size(const Value& value) { return json::serialize(value).size(); }
  static auto& items(auto& value) { return value.get_array(); }
  static auto& fields(auto& value) { return value.get_object(); }
  static const Value* find(const Value& object, std::string_view key) {
    return object.get_object().if_contains(boost_text(key));
  }
  static std::string_view key_of(const json::key_value_pair& field) {
    return {field.key().data(), field.key().size()};
  }
  static auto& value_of(auto& field) { return field.value(); }
  static void erase(Value& object, json::object::iterator field) { object.get_object().stable_erase(field); }

 private:
  // Each life has a new resource: a resource that is reused makes its blocks larger with every release.
  void begin() { memory_ = &resource_.emplace(first_block_.data(), first_block_.size()); }

  std::vector<unsigned char> first_block_ = std::vector<unsigned char>(kFirstBlock);
  std::optional<json::monotonic_resource> resource_;
  json::storage_ptr memory_;
  std::optional<Value> value_;
};

}  // namespace

std::unique_ptr<Contender> boost_json_peer(const Subject& subject) {
  return std::make_unique<Peer<BoostJson>>(subject);
}

}  // namespace vantrex::bench

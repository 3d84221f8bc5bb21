#include "support/json_text.h"

#include <stdexcept>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "vantrex/values/integer.h"

namespace vantrex::tests {

using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

class TreeBuilder final : public nlohmann::json_sax<nlohmann::json> {
 public:
  bool null() override { return add(nullptr); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(number_integer_t value) override { return add(value); }
  bool number_unsigned(number_unsigned_t value) override { return add(value); }
  bool number_float(number_float_t value, const string_t& digits) override {
    // An integer beyond 64 bits comes as a float with its digits.
    if (auto integer = Integer::parse(digits)) return add(*std::move(integer));
    return add(value);
  }
  bool string(string_t& value) override { return add(value); }
  bool binary(binary_t&) override { return false; }
  bool start_object(std::size_t) override { return open(JsonObject()); }
  bool start_array(std::size_t) override { return open(JsonList()); }
  bool end_object() override { return close(); }
  bool end_array() override { return close(); }
  bool key(string_t& value) override {
    levels_.back().key = value;
    return true;
  }
  bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception& error) override {
    throw std::invalid_argument(error.what());
  }

  JsonValue take() { return std::move(root_); }

 private:
  struct Level {
    JsonValue container;
    std::string key;
  };

  bool add(JsonValue value) {
    if (levels_.empty()) {
      root_ = std::move(value);
    } else if (JsonList* list = levels_.back().container.list()) {
      list->push_back(std::move(value));
    } else {
      levels_.back().container.object()->set(levels_.back().key, std::move(value));
    }
    return true;
  }
  bool open(JsonValue container) {
    levels_.push_back({std::move(container), {}});
    return true;
  }
  bool close() {
    JsonValue finished = std::move(levels_.back().container);
    levels_.pop_back();
    return add(std::move(finished));
  }

  std::vector<Level> levels_;
  JsonValue root_;
};

}  // namespace

JsonValue parse(std::string_view text) {
  TreeBuilder builder;
  nlohmann::json::sax_parse(text, &builder);
  return builder.take();
}

JsonObject parse_object(std::string_view text) {
  JsonValue value = parse(text);
  if (value.object() == nullptr) throw std::invalid_argument("no object: " + std::string(text));
  return std::move(*value.object());
}

}  // namespace vantrex::tests

// The job on nlohmann's ordered_json. Its objects are vectors of fields, filled
// here without the search for an equal key.
#include <nlohmann/json.hpp>

#include "peers/peer.h"

namespace vantrex::bench {

namespace {

using nlohmann::ordered_json;
using peers::Size;
using Object = ordered_json::object_t;
using Array = ordered_json::array_t;

ordered_json copy_of(const ordered_json& source) {
  if (source.is_object()) {
    const auto& fields = source.get_ref<const Object&>();
    ordered_json copy(ordered_json::value_t::object);
    auto& copied = copy.get_ref<Object&>();
    copied.reserve(fields.size());
    for (const auto& [key, value] : fields) {
      if (!value.is_null()) copied.emplace_back(key, copy_of(value));
    }
    return copy;
  }
  if (source.is_array()) {
    const auto& items = source.get_ref<const Array&>();
    ordered_json copy(ordered_json::value_t::array);
    auto& copied = copy.get_ref<Array&>();
    copied.reserve(items.size());
    for (const auto& item : items) copied.emplace_back(copy_of(item));
    return copy;
  }
  return source;
}

std::size_t float_size(double number) {
  std::array<char, 64> buffer;
  const char* end = nlohmann::detail::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
  return static_cast<std::size_t>(end - buffer.data());
}

Size size_of(const ordered_json& value) {
  switch (value.type()) {
    case ordered_json::value_t::boolean:
      return {value.get<bool>() ? 4U : 5U, 0};
    case ordered_json::value_t::number_integer:
    case ordered_json::value_t::number_unsigned:
      return {peers::integer_size(value.get<std::int64_t>()), 0};
    case ordered_json::value_t::number_float:
      return {float_size(value.get<double>()), 0};
    case ordered_json::value_t::string:
      return {peers::string_size(value.get_ref<const std::string&>()), 0};
    case ordered_json::value_t::array: {
      const auto& items = value.get_ref<const Array&>();
      Size size{items.empty() ? 2 : items.size() + 1, 0};
      for (const auto& item : items) {
        const Size inner = size_of(item);
        size.text += inner.text;
        size.hints += inner.hints;
      }
      return size;
    }
    case ordered_json::value_t::object: {
      const auto& fields = value.get_ref<const Object&>();
      Size size{fields.empty() ? 2 : 2 * fields.size() + 1, 0};
      for (const auto& [key, field] : fields) {
        const Size inner = size_of(field);
        size.text += peers::string_size(key) + inner.text;
        size.hints += peers::is_hint_key(key) ? inner.text : inner.hints;
      }
      return size;
    }
    default:
      return {4, 0};
  }
}

ordered_json step(const ordered_json& answer, const PlannedStep& planned) {
  const ordered_json& holder = planned.list.empty() ? answer : answer[planned.list][0];
  const std::int64_t total = planned.counted ? answer["total_count"].get<std::int64_t>() : 0;
  ordered_json args(ordered_json::value_t::object);
  auto& arguments = args.get_ref<Object&>();
  arguments.reserve(2);
  arguments.emplace_back("action", planned.action);
  arguments.emplace_back(planned.argument, holder[planned.argument]);
  ordered_json made(ordered_json::value_t::object);
  auto& fields = made.get_ref<Object&>();
  fields.reserve(3);
  fields.emplace_back("tool", planned.tool);
  fields.emplace_back("args", std::move(args));
  fields.emplace_back("reason", peers::reason_of(planned, total));
  return made;
}

class NlohmannPeer : public Contender {
 public:
  explicit NlohmannPeer(const Request& request)
      : request_(request),
        source_(ordered_json::parse(peers::answer_text(request))),
        copy_(ordered_json::parse(peers::copy_text(request))) {}

  std::size_t finish() override {
    ordered_json answer = copy_of(source_);
    return attach(answer).text;
  }
  std::size_t finish_and_write() override { return finished_text().size(); }
  std::size_t copy() override { return copy_of(source_).size(); }
  std::size_t count() override {
    const Size size = size_of(copy_);
    return size.text + size.hints;
  }
  std::string finished_text() override {
    ordered_json answer = copy_of(source_);
    static_cast<void>(attach(answer));
    return answer.dump();
  }

 private:
  Size attach(ordered_json& answer) const {
    const Size size = size_of(answer);
    ordered_json steps(ordered_json::value_t::array);
    auto& items = steps.get_ref<Array&>();
    items.reserve(2);
    for (const PlannedStep& planned : request_.plan) items.push_back(step(answer, planned));
    if (peers::steps_that_fit(size, size_of(items[0]).text, size_of(items[1]).text) < 2) items.pop_back();
    answer.get_ref<Object&>().emplace_back("next_steps", std::move(steps));
    return size;
  }

  const Request& request_;
  const ordered_json source_;
  const ordered_json copy_;
};

}  // namespace

std::unique_ptr<Contender> nlohmann_peer(const Request& request) {
  return std::make_unique<NlohmannPeer>(request);
}

}  // namespace vantrex::bench

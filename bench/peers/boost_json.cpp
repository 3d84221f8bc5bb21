// The job on Boost.JSON: a monotonic resource for every finished answer, its
// first block kept between answers. Nothing in it is destroyed one by one.
#include <vector>

#include <boost/json/src.hpp>

#include "peers/peer.h"

namespace vantrex::bench {

namespace {

namespace json = boost::json;
using peers::Size;

constexpr std::size_t kFirstBlock = std::size_t{64} << 10;

std::string_view text_of(json::string_view text) {
  return {text.data(), text.size()};
}
json::string_view text_of(std::string_view text) {
  return {text.data(), text.size()};
}

std::size_t float_size(double number) {
  std::array<char, 32> buffer;
  thread_local json::serializer serializer;
  const json::value value(number);
  serializer.reset(&value);
  return serializer.read(buffer.data(), buffer.size()).size();
}

Size scalar_size(const json::value& value) {
  switch (value.kind()) {
    case json::kind::bool_:
      return {value.get_bool() ? 4U : 5U, 0};
    case json::kind::int64:
      return {peers::integer_size(value.get_int64()), 0};
    case json::kind::uint64:
      return {peers::integer_size(static_cast<std::int64_t>(value.get_uint64())), 0};
    case json::kind::double_:
      return {float_size(value.get_double()), 0};
    case json::kind::string:
      return {peers::string_size(text_of(json::string_view(value.get_string()))), 0};
    default:
      return {4, 0};
  }
}

void add_field(Size& size, std::string_view key, Size field) {
  size.text += peers::string_size(key) + field.text + 2;
  size.hints += peers::is_hint_key(key) ? field.text : field.hints;
}

void add_item(Size& size, Size item) {
  size.text += item.text + 1;
  size.hints += item.hints;
}

Size size_of(const json::object& object);

Size size_of(const json::value& value) {
  if (const json::object* object = value.if_object()) return size_of(*object);
  const json::array* array = value.if_array();
  if (array == nullptr) return scalar_size(value);
  Size size{array->empty() ? 2U : 1U, 0};
  for (const json::value& item : *array) add_item(size, size_of(item));
  return size;
}

Size size_of(const json::object& object) {
  Size size{object.empty() ? 2U : 1U, 0};
  for (const auto& field : object) add_field(size, text_of(field.key()), size_of(field.value()));
  return size;
}

// Takes the null fields out of a copy and measures what stays. Copying all and
// removing a few is faster here than adding fields one by one, each of which is
// looked up first.
template <bool kMeasures>
Size strip(json::object& object);

template <bool kMeasures>
Size strip(json::value& value) {
  if (json::object* object = value.if_object()) return strip<kMeasures>(*object);
  json::array* array = value.if_array();
  if (array == nullptr) return kMeasures ? scalar_size(value) : Size();
  Size size{array->empty() ? 2U : 1U, 0};
  for (json::value& item : *array) add_item(size, strip<kMeasures>(item));
  return size;
}

template <bool kMeasures>
Size strip(json::object& object) {
  Size size{1, 0};
  for (auto field = object.begin(); field != object.end();) {
    if (field->value().is_null()) {
      field = object.stable_erase(field);
      continue;
    }
    const Size value = strip<kMeasures>(field->value());
    if (kMeasures) add_field(size, text_of(field->key()), value);
    ++field;
  }
  size.text += object.empty();
  return size;
}

json::object step(const json::object& answer, const PlannedStep& planned) {
  const json::storage_ptr& storage = answer.storage();
  const json::object& holder =
      planned.list.empty() ? answer : answer.at(text_of(planned.list)).get_array()[0].get_object();
  const std::int64_t total = planned.counted ? answer.at("total_count").get_int64() : 0;
  json::object args(2, storage);
  args.emplace("action", text_of(planned.action));
  args.emplace(text_of(planned.argument), holder.at(text_of(planned.argument)));
  json::object made(3, storage);
  made.emplace("tool", text_of(planned.tool));
  made.emplace("args", std::move(args));
  made.emplace("reason", peers::reason_of(planned, total));
  return made;
}

class BoostJsonPeer : public Contender {
 public:
  explicit BoostJsonPeer(const Request& request)
      : request_(request),
        source_(json::parse(peers::answer_text(request), &memory_)),
        copy_(json::parse(peers::copy_text(request), &memory_)),
        first_block_(kFirstBlock) {}

  std::size_t finish() override {
    json::monotonic_resource memory(first_block_.data(), first_block_.size());
    json::object answer(source_.get_object(), &memory);
    const Size size = strip<true>(answer);
    attach(answer, size);
    return size.text;
  }
  std::size_t finish_and_write() override {
    json::monotonic_resource memory(first_block_.data(), first_block_.size());
    json::object answer(source_.get_object(), &memory);
    attach(answer, strip<true>(answer));
    return write(answer);
  }
  std::size_t copy() override {
    json::monotonic_resource memory(first_block_.data(), first_block_.size());
    json::object answer(source_.get_object(), &memory);
    static_cast<void>(strip<false>(answer));
    return answer.size();
  }
  std::size_t count() override {
    const Size size = size_of(copy_);
    return size.text + size.hints;
  }
  std::string finished_text() override { return text_.substr(0, finish_and_write()); }

 private:
  void attach(json::object& answer, Size size) const {
    json::array steps(answer.storage());
    steps.reserve(2);
    for (const PlannedStep& planned : request_.plan) steps.emplace_back(step(answer, planned));
    if (peers::steps_that_fit(size, size_of(steps[0]).text, size_of(steps[1]).text) < 2) steps.pop_back();
    answer.emplace("next_steps", std::move(steps));
  }

  // Writes into the kept text. Returns the bytes.
  std::size_t write(const json::object& value) {
    serializer_.reset(&value);
    std::size_t size = 0;
    while (!serializer_.done()) {
      if (text_.size() - size < kFirstBlock) text_.resize(2 * text_.size() + kFirstBlock);
      size += serializer_.read(text_.data() + size, text_.size() - size).size();
    }
    return size;
  }

  const Request& request_;
  json::monotonic_resource memory_;
  const json::value source_;
  const json::value copy_;
  std::vector<unsigned char> first_block_;
  json::serializer serializer_;
  std::string text_;
};

}  // namespace

std::unique_ptr<Contender> boost_json_peer(const Request& request) {
  return std::make_unique<BoostJsonPeer>(request);
}

}  // namespace vantrex::bench

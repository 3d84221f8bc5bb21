// The job on Boost.JSON: a monotonic resource for every finished answer, its
// first block kept between answers. Nothing in it is destroyed one by one.
#include <vector>

#include <boost/json/src.hpp>

#include "peers/peer.h"
#include "vantrex/values/text_forms.h"

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

json::value copy_of(const json::value& source, const json::storage_ptr& storage) {
  if (const json::object* fields = source.if_object()) {
    json::object copy(fields->size(), storage);
    for (const auto& field : *fields) {
      if (!field.value().is_null()) copy.emplace(field.key(), copy_of(field.value(), storage));
    }
    return copy;
  }
  if (const json::array* items = source.if_array()) {
    json::array copy(storage);
    copy.reserve(items->size());
    for (const json::value& item : *items) copy.emplace_back(copy_of(item, storage));
    return copy;
  }
  return json::value(source, storage);
}

std::size_t float_size(double number) {
  char buffer[32];
  json::serializer serializer;
  const json::value value(number);
  serializer.reset(&value);
  return serializer.read(buffer, sizeof(buffer)).size();
}

Size size_of(const json::value& value);

Size size_of(const json::object& fields) {
  Size size{fields.empty() ? 2 : 2 * fields.size() + 1, 0};
  for (const auto& field : fields) {
    const Size inner = size_of(field.value());
    const std::string_view key = text_of(field.key());
    size.text += peers::string_size(key) + inner.text;
    size.hints += peers::is_hint_key(key) ? inner.text : inner.hints;
  }
  return size;
}

Size size_of(const json::value& value) {
  switch (value.kind()) {
    case json::kind::null:
      return {4, 0};
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
    case json::kind::array: {
      const json::array& items = value.get_array();
      Size size{items.empty() ? 2 : items.size() + 1, 0};
      for (const json::value& item : items) {
        const Size inner = size_of(item);
        size.text += inner.text;
        size.hints += inner.hints;
      }
      return size;
    }
    default:
      return size_of(value.get_object());
  }
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
        source_(json::parse(values::compact_text(request.answer), &source_memory_)),
        copy_(copy_of(source_, &source_memory_)),
        first_block_(kFirstBlock) {}

  std::size_t finish() override {
    json::monotonic_resource memory(first_block_.data(), first_block_.size());
    json::value answer = copy_of(source_, &memory);
    return attach(answer.get_object()).text;
  }
  std::size_t finish_and_write() override {
    json::monotonic_resource memory(first_block_.data(), first_block_.size());
    json::value answer = copy_of(source_, &memory);
    static_cast<void>(attach(answer.get_object()));
    return write(answer);
  }
  std::size_t copy() override {
    json::monotonic_resource memory(first_block_.data(), first_block_.size());
    return copy_of(source_, &memory).get_object().size();
  }
  std::size_t count() override {
    const Size size = size_of(copy_);
    return size.text + size.hints;
  }
  std::string finished_text() override { return text_.substr(0, finish_and_write()); }

 private:
  Size attach(json::object& answer) const {
    const Size size = size_of(answer);
    json::array steps(answer.storage());
    steps.reserve(2);
    for (const PlannedStep& planned : request_.plan) steps.emplace_back(step(answer, planned));
    if (peers::steps_that_fit(size, size_of(steps[0]).text, size_of(steps[1]).text) < 2) steps.pop_back();
    answer.emplace("next_steps", std::move(steps));
    return size;
  }

  // Writes into the kept text. Returns the bytes.
  std::size_t write(const json::value& value) {
    serializer_.reset(&value);
    std::size_t size = 0;
    while (!serializer_.done()) {
      if (text_.size() - size < kFirstBlock) text_.resize(2 * text_.size() + kFirstBlock);
      size += serializer_.read(text_.data() + size, text_.size() - size).size();
    }
    return size;
  }

  const Request& request_;
  json::monotonic_resource source_memory_;
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

// The life on RapidJSON: a pool for every answer, its first block and the stack
// of the document kept between lives; strings borrowed from the rows.
//
// Its own vector instructions stay off: with SSE2 or SSE4.2 its writer leaves
// some control characters unescaped.
#include <algorithm>
#include <concepts>
#include <cstring>
#include <new>
#include <stdexcept>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "peers/fields.h"
#include "peers/finishing.h"

namespace vantrex::bench {

namespace {

// Its memory, counted as all other is.
struct NewAllocator {
  static const bool kNeedFree = true;
  static void* Malloc(std::size_t bytes) { return bytes == 0 ? nullptr : ::operator new(bytes); }
  static void* Realloc(void* memory, std::size_t bytes, std::size_t wanted) {
    void* larger = Malloc(wanted);
    if (memory != nullptr) std::memcpy(larger, memory, std::min(bytes, wanted));
    Free(memory);
    return larger;
  }
  static void Free(void* memory) { ::operator delete(memory); }
};

using Pool = rapidjson::MemoryPoolAllocator<NewAllocator>;
using Value = rapidjson::GenericValue<rapidjson::UTF8<>, Pool>;
using Document = rapidjson::GenericDocument<rapidjson::UTF8<>, Pool, Pool>;
using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, NewAllocator>;
using Writer = rapidjson::Writer<Buffer, rapidjson::UTF8<>, rapidjson::UTF8<>, NewAllocator>;
using rapidjson::SizeType;

constexpr std::size_t kFirstBlock = std::size_t{64} << 10;
constexpr std::size_t kFurtherBlocks = std::size_t{1} << 20;

SizeType length(std::size_t size) {
  return static_cast<SizeType>(size);
}

Value::StringRefType reference(std::string_view text) {
  return {text.data(), length(text.size())};
}

// Sends rows to a document under construction, which lays out every list and
// object to its exact size.
struct Builder {
  Document& target;

  void add(std::nullptr_t) { target.Null(); }
  void add(std::same_as<bool> auto value) { target.Bool(value); }
  void add(std::int64_t number) { target.Int64(number); }
  void add(double number) { target.Double(number); }
  void add(std::string_view text) { target.String(text.data(), length(text.size()), false); }
  void add(const std::string& text) { add(std::string_view(text)); }
  template <typename T>
  void add(const std::optional<T>& value) {
    if (value) {
      add(*value);
    } else {
      target.Null();
    }
  }
  template <typename T>
  void add(const std::vector<T>& items) {
    target.StartArray();
    for (const T& item : items) add(item);
    target.EndArray(length(items.size()));
  }
  template <Row T>
  void add(const T& row) {
    target.StartObject();
    describe(row, [&](std::string_view key, const auto& value) {
      target.Key(key.data(), length(key.size()), false);
      add(value);
    });
    target.EndObject(length(field_count(row)));
  }
};

// How the peers' finishing reads a value.
struct Json {
  static const Value* find(const Value& object, std::string_view key) {
    const auto field = object.FindMember(Value(reference(key)));
    return field == object.MemberEnd() ? nullptr : &field->value;
  }
  static peers::Kind kind(const Value& value) {
    using peers::Kind;
    constexpr std::array kKinds = {Kind::null, Kind::boolean, Kind::boolean, Kind::object,
                                   Kind::list, Kind::string,  Kind::integer};
    return value.IsDouble() ? Kind::floating : kKinds[value.GetType()];
  }
  static bool boolean(const Value& value) { return value.GetBool(); }
  static std::int64_t integer(const Value& value) { return value.GetInt64(); }
  static std::string_view text(const Value& value) { return {value.GetString(), value.GetStringLength()}; }
  static auto items(const Value& value) { return value.GetArray(); }
  static const Value& object(const Value& value) { return value; }
  static auto fields(const Value& value) { return value.GetObject(); }
  static std::string_view key(const Value::Member& field) { return text(field.name); }
  static const Value& value(const Value::Member& field) { return field.value; }
  static std::size_t float_size(const Value& value) {
    Buffer text;
    Writer(text).Double(value.GetDouble());
    return text.GetSize();
  }
};

// Drops null fields in place. Returns the bytes of the hint fields.
std::size_t drop_nulls(Value& value) {
  std::size_t hints = 0;
  if (value.IsArray()) {
    for (Value& item : value.GetArray()) hints += drop_nulls(item);
  }
  if (!value.IsObject()) return hints;
  auto kept = value.MemberBegin();
  for (Value::Member& field : value.GetObject()) {
    if (field.value.IsNull()) continue;
    const std::size_t inner = drop_nulls(field.value);
    hints += peers::is_hint_key(Json::key(field)) ? peers::size_of<Json>(field.value, SIZE_MAX) : inner;
    if (&*kept != &field) {
      kept->name = field.name;
      kept->value = field.value;
    }
    ++kept;
  }
  if (kept != value.MemberEnd()) value.EraseMember(kept, value.MemberEnd());
  return hints;
}

// A pool whose first block is kept.
struct Memory {
  std::vector<char> first_block = std::vector<char>(kFirstBlock);
  Pool pool{first_block.data(), first_block.size(), kFurtherBlocks};
};

class RapidjsonPeer : public Contender {
 public:
  explicit RapidjsonPeer(const Subject& subject) : subject_(subject), hints_(peers::hints_of(subject)) {}

  void build() override {
    auto generator = [&](Document& target) {
      std::visit([&](const auto& rows) { Builder{target}.add(rows); }, subject_.rows);
      return true;
    };
    answer_.Populate(generator);
    stack_memory_.pool.Clear();
  }
  void finish() override {
    finish(answer_, memory_.pool);
    finished_ = &answer_;
  }
  void finish_kept() override {
    if (copy_memory_ == nullptr) copy_memory_ = std::make_unique<Memory>();
    copy_.CopyFrom(answer_, copy_memory_->pool);
    finish(copy_, copy_memory_->pool);
    finished_ = &copy_;
  }
  std::string_view write() override {
    writer_.Reset(text_);
    finished_->Accept(writer_);
    return {text_.GetString(), text_.GetSize()};
  }
  void destroy() override {
    answer_.SetNull();
    copy_.SetNull();
    memory_.pool.Clear();
    if (copy_memory_ != nullptr) copy_memory_->pool.Clear();
    text_.Clear();
  }

 private:
  void finish(Value& answer, Pool& pool) const {
    peers::Steps steps;
    const std::size_t hint_bytes = drop_nulls(answer);
    peers::choose<Json>(steps, answer, hints_, hint_bytes);
    if (steps.size() == 0) return;
    Value list(rapidjson::kArrayType);
    list.Reserve(length(steps.size()), pool);
    for (const peers::Step& step : steps) list.PushBack(json(step, pool), pool);
    answer.AddMember("next_steps", list, pool);
  }

  static Value json(const peers::Step& step, Pool& pool) {
    Value args(rapidjson::kObjectType);
    args.AddMember("action", reference(step.hint->action), pool);
    args.AddMember(reference(step.hint->takes), reference(step.value), pool);
    Value made(rapidjson::kObjectType);
    made.AddMember("tool", reference(step.hint->tool), pool);
    made.AddMember("args", args, pool);
    Value reason(reference(step.reason));
    if (step.hint->is_signal) reason.SetString(step.reason.data(), length(step.reason.size()), pool);
    made.AddMember("reason", reason, pool);
    return made;
  }

  const Subject& subject_;
  const std::span<const peers::Hint> hints_;
  Memory memory_;
  Memory stack_memory_;
  std::unique_ptr<Memory> copy_memory_;  // made when it is first needed
  Document answer_{&memory_.pool, kFirstBlock / 4, &stack_memory_.pool};
  Value copy_;
  const Value* finished_ = nullptr;
  Buffer text_;
  Writer writer_{text_};
};

}  // namespace

std::unique_ptr<Contender> rapidjson_peer(const Subject& subject) {
  return std::make_unique<RapidjsonPeer>(subject);
}

}  // namespace vantrex::bench

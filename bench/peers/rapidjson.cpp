// The life with RapidJSON. Each answer lies in a pool, whose first block is kept between lives. Strings refer
// to the rows.
//
// RapidJSON's vector instructions are off: with SSE2 or SSE4.2 its writer leaves some control characters
// unescaped.
#include <algorithm>
#include <concepts>
#include <cstring>
#include <new>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "peers/peer.h"

namespace vantrex::bench {

namespace {

// An allocator that uses operator new, so that its memory is counted.
struct NewAllocator {
  static void* Malloc(std::size_t bytes) { return bytes == 0 ? nullptr : ::operator new(bytes); }
  static void* Realloc(void* memory, std::size_t bytes, std::size_t wanted) {
    void* larger = Malloc(wanted);
    if (memory != nullptr) std::memcpy(larger, memory, std::min(bytes, wanted));
    Free(memory);
    return larger;
  }
  static void Free(void* memory) { ::operator delete(memory); }
};

using Utf8 = rapidjson::UTF8<>;
using Pool = rapidjson::MemoryPoolAllocator<NewAllocator>;
using Buffer = rapidjson::GenericStringBuffer<Utf8, NewAllocator>;

constexpr std::size_t kFirstBlock = std::size_t{64} << 10;
constexpr std::size_t kFurtherBlocks = std::size_t{1} << 20;

rapidjson::SizeType length(std::size_t size) {
  return static_cast<rapidjson::SizeType>(size);
}

class RapidJson {
 public:
  using Value = rapidjson::GenericValue<Utf8, Pool>;
  struct Writer {
    Buffer text;
    rapidjson::Writer<Buffer, Utf8, Utf8, NewAllocator> writer{text};

    std::string_view write(const Value& value) {
      text.Clear();
      writer.Reset(text);
      value.Accept(writer);
      return {text.GetString(), text.GetSize()};
    }
  };

  void build(const auto& rows) { value_ = Maker<RapidJson>{*this}.made(rows); }
  void copy_from(const RapidJson& other) { value_.CopyFrom(other.value_, pool_); }
  Value& value() { return value_; }
  void release() {
    value_.SetNull();
    pool_.Clear();
  }

  Value single(std::nullptr_t) { return Value(); }
  Value single(std::same_as<bool> auto value) { return Value(value); }
  Value single(std::int64_t number) { return Value(number); }
  Value single(double number) { return Value(number); }
  Value single(std::string_view text) { return Value(reference(text)); }
  Value object(std::size_t /*capacity*/) { return Value(rapidjson::kObjectType); }
  Value list(std::size_t capacity) {
    Value list(rapidjson::kArrayType);
    list.Reserve(length(capacity), pool_);
    return list;
  }
  void add(Value& object, std::string_view key, Value value) {
    object.AddMember(reference(key), value, pool_);
  }
  void push(Value& list, Value value) { list.PushBack(value, pool_); }

  static Kind kind(const Value& value) {
    constexpr std::array kKinds = {Kind::null, Kind::boolean, Kind::boolean, Kind::object,
                                   Kind::list, Kind::string,  Kind::integer};
    return value.IsDouble() ? Kind::floating : kKinds[value.GetType()];
  }
  static bool boolean(const Value& value) { return value.GetBool(); }
  static std::int64_t integer(const Value& value) { return value.GetInt64(); }
  static std::string_view text_of(const Value& value) { return {value.GetString(), value.GetStringLength()}; }
  static std::size_t float_size(const Value& value) { return Writer().write(value).size(); }
  static auto items(auto& value) { return value.GetArray(); }
  static auto fields(auto& value) { return value.GetObject(); }
  static const Value* find(const Value& object, std::string_view key) {
    const auto field = object.FindMember(Value(reference(key)));
    return field == object.MemberEnd() ? nullptr : &field->value;
  }
  static std::string_view key_of(const Value::Member& field) { return text_of(field.name); }
  static auto& value_of(auto& field) { return field.value; }
  static void erase(Value& object, Value::MemberIterator field) { object.EraseMember(field); }

 private:
  static Value::StringRefType reference(std::string_view text) { return {text.data(), length(text.size())}; }

  std::vector<char> first_block_ = std::vector<char>(kFirstBlock);
  Pool pool_{first_block_.data(), first_block_.size(), kFurtherBlocks};
  Value value_;
};

}  // namespace

std::unique_ptr<Contender> rapidjson_peer(const Subject& subject) {
  return std::make_unique<Peer<RapidJson>>(subject);
}

}  // namespace vantrex::bench

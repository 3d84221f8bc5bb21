// The job on RapidJSON: a pool for every finished answer, its first block and
// the stack of the copying document kept between answers.
//
// RapidJSON's own vector instructions stay off: with SSE2 or SSE4.2 its writer
// leaves some control characters unescaped.
#include <stdexcept>
#include <vector>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include "peers/peer.h"

namespace vantrex::bench {

namespace {

using peers::Size;
using Pool = rapidjson::MemoryPoolAllocator<>;
using Value = rapidjson::GenericValue<rapidjson::UTF8<>, Pool>;
using Document = rapidjson::GenericDocument<rapidjson::UTF8<>, Pool, Pool>;

constexpr std::size_t kFirstBlock = std::size_t{64} << 10;
constexpr std::size_t kFurtherBlocks = std::size_t{1} << 20;

// A stream that only counts.
struct CountingStream {
  using Ch = char;
  void Put(char /*byte*/) { ++size; }
  void Flush() {}
  std::size_t size = 0;
};

std::string_view text_of(const Value& value) {
  return {value.GetString(), value.GetStringLength()};
}

Value::StringRefType reference(std::string_view text) {
  return {text.data(), static_cast<rapidjson::SizeType>(text.size())};
}

const Value& field(const Value& object, std::string_view key) {
  return object.FindMember(Value(reference(key)))->value;
}

std::size_t float_size(double number) {
  CountingStream stream;
  rapidjson::Writer<CountingStream, rapidjson::UTF8<>, rapidjson::UTF8<>, Pool> writer(stream);
  writer.Double(number);
  return stream.size;
}

// Where a walk sends what it meets: nowhere, when it only measures.
struct Nowhere {
  void Null() {}
  void Bool(bool /*value*/) {}
  void Int64(std::int64_t /*number*/) {}
  void Double(double /*number*/) {}
  void String(const char* /*bytes*/, rapidjson::SizeType /*size*/, bool /*copy*/) {}
  void Key(const char* /*bytes*/, rapidjson::SizeType /*size*/, bool /*copy*/) {}
  void StartArray() {}
  void EndArray(rapidjson::SizeType /*items*/) {}
  void StartObject() {}
  void EndObject(rapidjson::SizeType /*fields*/) {}
};

// Walks over `source` without its null fields, sends it to `target` (a document
// under construction lays out every container to its exact size) and measures
// what it sends.
template <bool kMeasures, typename Target>
Size walk(const Value& source, Target& target) {
  switch (source.GetType()) {
    case rapidjson::kNullType:
      target.Null();
      return {4, 0};
    case rapidjson::kTrueType:
      target.Bool(true);
      return {4, 0};
    case rapidjson::kFalseType:
      target.Bool(false);
      return {5, 0};
    case rapidjson::kNumberType:
      if (source.IsInt64()) {
        target.Int64(source.GetInt64());
        return {kMeasures ? peers::integer_size(source.GetInt64()) : 0, 0};
      }
      target.Double(source.GetDouble());
      return {kMeasures ? float_size(source.GetDouble()) : 0, 0};
    case rapidjson::kStringType:
      target.String(source.GetString(), source.GetStringLength(), true);
      return {kMeasures ? peers::string_size(text_of(source)) : 0, 0};
    case rapidjson::kArrayType: {
      Size size{source.Empty() ? 2U : source.Size() + std::size_t{1}, 0};
      target.StartArray();
      for (const Value& item : source.GetArray()) {
        const Size inner = walk<kMeasures>(item, target);
        size.text += inner.text;
        size.hints += inner.hints;
      }
      target.EndArray(source.Size());
      return size;
    }
    default: {
      Size size{1, 0};
      rapidjson::SizeType fields = 0;
      target.StartObject();
      for (const auto& field : source.GetObject()) {
        if (field.value.IsNull()) continue;
        target.Key(field.name.GetString(), field.name.GetStringLength(), true);
        const Size inner = walk<kMeasures>(field.value, target);
        if (kMeasures) {
          size.text += peers::string_size(text_of(field.name)) + inner.text + 2;
          size.hints += peers::is_hint_key(text_of(field.name)) ? inner.text : inner.hints;
        }
        ++fields;
      }
      target.EndObject(fields);
      size.text += fields == 0;
      return size;
    }
  }
}

Size size_of(const Value& value) {
  Nowhere nowhere;
  return walk<true>(value, nowhere);
}

class RapidjsonPeer : public Contender {
 public:
  explicit RapidjsonPeer(const Request& request)
      : request_(request), first_block_(kFirstBlock), stack_block_(kFirstBlock) {
    source_.Parse(peers::answer_text(request).c_str());
    copy_.Parse(peers::copy_text(request).c_str());
    if (source_.HasParseError() || copy_.HasParseError())
      throw std::runtime_error("RapidJSON cannot read it");
  }

  std::size_t finish() override {
    Finished finished(*this);
    return finished.copy_and_attach().text;
  }
  std::size_t finish_and_write() override {
    Finished finished(*this);
    static_cast<void>(finished.copy_and_attach());
    write(finished.answer);
    return text_.GetSize();
  }
  std::size_t copy() override {
    Finished finished(*this);
    finished.copy<false>();
    return finished.answer.MemberCount();
  }
  std::size_t count() override {
    const Size size = size_of(copy_);
    return size.text + size.hints;
  }
  std::string finished_text() override {
    finish_and_write();
    return {text_.GetString(), text_.GetSize()};
  }

 private:
  // A finished answer and the memory it lies in.
  struct Finished {
    explicit Finished(RapidjsonPeer& of)
        : peer(of),
          pool(of.first_block_.data(), of.first_block_.size(), kFurtherBlocks),
          stack_pool(of.stack_block_.data(), of.stack_block_.size(), kFurtherBlocks),
          answer(&pool, kFirstBlock / 4, &stack_pool) {}

    template <bool kMeasures>
    Size copy() {
      Size size;
      auto generator = [&](Document& target) {
        size = walk<kMeasures>(peer.source_, target);
        return true;
      };
      answer.Populate(generator);
      return size;
    }

    Size copy_and_attach() {
      const Size size = copy<true>();
      Value steps(rapidjson::kArrayType);
      steps.Reserve(2, pool);
      for (const PlannedStep& planned : peer.request_.plan) steps.PushBack(step(planned), pool);
      if (peers::steps_that_fit(size, size_of(steps[0]).text, size_of(steps[1]).text) < 2) steps.PopBack();
      answer.AddMember("next_steps", steps, pool);
      return size;
    }

    Value step(const PlannedStep& planned) {
      const Value& holder = planned.list.empty() ? answer : field(answer, planned.list)[0];
      Value args(rapidjson::kObjectType);
      args.AddMember("action", reference(planned.action), pool);
      args.AddMember(reference(planned.argument), Value(field(holder, planned.argument), pool), pool);
      const std::int64_t total = planned.counted ? field(answer, "total_count").GetInt64() : 0;
      const std::string reason = peers::reason_of(planned, total);
      Value made(rapidjson::kObjectType);
      made.AddMember("tool", reference(planned.tool), pool);
      made.AddMember("args", args, pool);
      made.AddMember("reason", Value(reason.data(), static_cast<rapidjson::SizeType>(reason.size()), pool),
                     pool);
      return made;
    }

    RapidjsonPeer& peer;
    Pool pool;
    Pool stack_pool;
    Document answer;
  };

  void write(const Value& value) {
    text_.Clear();
    rapidjson::Writer<rapidjson::StringBuffer> writer(text_);
    value.Accept(writer);
  }

  const Request& request_;
  Document source_;
  Document copy_;
  std::vector<char> first_block_;
  std::vector<char> stack_block_;
  rapidjson::StringBuffer text_;
};

}  // namespace

std::unique_ptr<Contender> rapidjson_peer(const Request& request) {
  return std::make_unique<RapidjsonPeer>(request);
}

}  // namespace vantrex::bench

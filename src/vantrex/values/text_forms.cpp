#include "vantrex/values/text_forms.h"

#include <algorithm>
#include <ostream>
#include <type_traits>
#include <utility>

#include "vantrex/values/block.h"
#include "vantrex/values/object_walk.h"
#include "vantrex/values/text_sinks.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

using detail::CountingSink;
using detail::MemorySink;
using detail::Tag;
using detail::ValueAccess;

namespace {

// Puts a value that is no list and no object.
template <typename Sink>
void put_scalar(const JsonValue& value, Sink& sink) {
  switch (ValueAccess::tag(value)) {
    case Tag::null:
      return sink.put("null");
    case Tag::boolean:
      return sink.put(*value.boolean() ? std::string_view("true") : std::string_view("false"));
    case Tag::integer:
      return sink.put_integer(ValueAccess::small_integer(value));
    case Tag::big_integer:
      return sink.put_digits(ValueAccess::digits(value));
    case Tag::floating:
      return sink.put_float(*value.floating());
    case Tag::foreign:
      return sink.put_string(value.foreign()->text_form());
    default:
      return sink.put_string(*value.text());
  }
}

// Writes a value, a list or an object into a sink.
template <typename Sink>
class Writer {
 public:
  // Puts the opening bracket and pushes the rest, or puts an empty list or object whole. Returns whether
  // there is a rest. A scalar is pushed as the only item of a list without an opening bracket.
  bool open(const JsonList& list, Sink& sink) {
    if (list.empty()) return put_whole("[]", sink);
    sink.put('[');
    walk_.push(list.begin(), list.end(), nullptr, nullptr);
    return true;
  }
  bool open(const JsonObject& object, Sink& sink) {
    if (object.empty()) return put_whole("{}", sink);
    sink.put('{');
    walk_.push(nullptr, nullptr, object.begin(), object.end());
    return true;
  }
  bool open(const JsonValue& value, Sink& sink) {
    if (value.list() != nullptr) return open(*value.list(), sink);
    if (value.object() != nullptr) return open(*value.object(), sink);
    walk_.push(&value, &value + 1, nullptr, nullptr);
    return true;
  }

  // Puts the rest of what was opened.
  Sink finish(Sink sink) {
    while (!walk_.empty()) {
      sink.ensure_room();
      if (const JsonValue* nested = put_rest(walk_.top(), sink)) {
        if (!open(*nested, sink)) sink.put(',');
      } else {
        walk_.pop();
        if (!walk_.empty()) sink.put(',');
      }
    }
    return sink;
  }

 private:
  // The rest of a list, or of an object.
  struct Level {
    const JsonValue* item;
    const JsonValue* items_end;
    const JsonField* field;
    const JsonField* fields_end;  // null for a list
  };

  static bool put_whole(std::string_view brackets, Sink& sink) {
    sink.put(brackets);
    return false;
  }

  // Puts the rest of a level until it reaches a list or an object, and returns that; at the end of the level,
  // returns a null pointer. Puts a comma after each value; the closing bracket replaces the last comma.
  const JsonValue* put_rest(Level& level, Sink& sink) {
    while (const JsonValue* value = next(level, sink)) {
      if (value->list() != nullptr || value->object() != nullptr) return value;
      put_scalar(*value, sink);
      sink.put(',');
    }
    sink.replace_last(level.fields_end != nullptr ? '}' : ']');
    return nullptr;
  }

  // The next value of a level, or null at its end. Puts the key of a field.
  const JsonValue* next(Level& level, Sink& sink) {
    if (level.fields_end != nullptr) {
      if (level.field == level.fields_end) return nullptr;
      sink.put_string(level.field->key);
      sink.put(':');
      return &level.field++->value;
    }
    if (level.item == level.items_end) return nullptr;
    sink.ensure_room();
    return level.item++;
  }

  WalkStack<Level> walk_;
};

// Puts `root` and returns the sink.
template <typename Sink, typename Root>
Sink put(const Root& root, Sink sink) {
  Writer<Sink> writer;
  writer.open(root, sink);
  sink = writer.finish(sink);
  if constexpr (std::is_same_v<Root, JsonValue>) {
    if (root.list() == nullptr && root.object() == nullptr) sink.drop_last();
  }
  return sink;
}

template <typename Root>
std::size_t count_bytes(const Root& root) {
  return put(root, CountingSink()).size();
}

template <typename Root>
std::string text_of(const Root& root) {
  detail::TextMemory memory;
  char* end = put(root, MemorySink(memory)).end();
  return std::move(memory).take(end);
}

}  // namespace

std::string compact_text(const JsonValue& value) {
  return text_of(value);
}
std::string compact_text(const JsonList& list) {
  return text_of(list);
}
std::string compact_text(const JsonObject& object) {
  return text_of(object);
}
std::string canonical_text(JsonValue value) {
  detail::visit_objects(value, [](JsonObject& object) {
    JsonField* const fields = ValueAccess::items(object);
    std::sort(fields, fields + object.size(),
              [](const JsonField& a, const JsonField& b) { return a.key < b.key; });
    detail::rebuild_index(fields, object.size());
    return true;
  });
  return compact_text(value);
}

std::size_t compact_size(const JsonValue& value) {
  return count_bytes(value);
}
std::size_t compact_size(const JsonList& list) {
  return count_bytes(list);
}
std::size_t compact_size(const JsonObject& object) {
  return count_bytes(object);
}

std::ostream& operator<<(std::ostream& out, const JsonValue& value) {
  return out << compact_text(value);
}
std::ostream& operator<<(std::ostream& out, const JsonList& list) {
  return out << compact_text(list);
}
std::ostream& operator<<(std::ostream& out, const JsonObject& object) {
  return out << compact_text(object);
}
std::ostream& operator<<(std::ostream& out, const Text& text) {
  return out << text.view();
}

}  // namespace vantrex::values

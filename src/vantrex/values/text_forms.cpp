#include "vantrex/values/text_forms.h"

#include <algorithm>
#include <ostream>
#include <utility>
#include <vector>

#include "vantrex/values/text_sinks.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

using detail::CountingSink;
using detail::FloatSizes;
using detail::MemorySink;
using detail::Tag;
using detail::ValueAccess;

namespace {

// The orders in which an object's fields are written. next() returns each field once, then a null pointer.
// The object opened last must be finished first.
class InsertionOrder {
 public:
  struct Cursor {
    const JsonField* next;
    const JsonField* end;
  };
  static Cursor open(const JsonObject& object) noexcept { return {object.begin(), object.end()}; }
  static const JsonField* next(Cursor& cursor) noexcept {
    return cursor.next == cursor.end ? nullptr : cursor.next++;
  }
};

class KeyOrder {
 public:
  struct Cursor {
    std::size_t next;
    std::size_t begin;
  };
  Cursor open(const JsonObject& object) {
    const std::size_t begin = fields_.size();
    for (const JsonField& field : object) fields_.push_back(&field);
    std::sort(fields_.begin() + static_cast<std::ptrdiff_t>(begin), fields_.end(),
              [](const JsonField* a, const JsonField* b) { return a->key < b->key; });
    return {begin, begin};
  }
  const JsonField* next(Cursor& cursor) noexcept {
    if (cursor.next < fields_.size()) return fields_[cursor.next++];
    fields_.resize(cursor.begin);
    return nullptr;
  }

 private:
  std::vector<const JsonField*> fields_;
};

// A list, an object or a scalar. `value` is null when the container is no JsonValue.
struct Source {
  // NOLINTBEGIN(google-explicit-constructor): stands for any of the three.
  Source(const JsonValue& any) noexcept : list(any.list()), object(any.object()), value(&any) {}
  Source(const JsonList& a_list) noexcept : list(&a_list) {}
  Source(const JsonObject& an_object) noexcept : object(&an_object) {}
  // NOLINTEND(google-explicit-constructor)

  const JsonList* list = nullptr;
  const JsonObject* object = nullptr;
  const JsonValue* value = nullptr;
};

// Puts a scalar, an empty list or an empty object, and returns true. For any other list or object, puts
// nothing and returns false.
template <typename Sink>
bool put_whole(const JsonValue& value, Sink& sink) {
  switch (ValueAccess::tag(value)) {
    case Tag::list:
      if (!value.list()->empty()) return false;
      sink.put("[]");
      break;
    case Tag::object:
      if (!value.object()->empty()) return false;
      sink.put("{}");
      break;
    case Tag::null:
      sink.put("null");
      break;
    case Tag::boolean:
      sink.put(*value.boolean() ? std::string_view("true") : std::string_view("false"));
      break;
    case Tag::integer:
      sink.put_integer(ValueAccess::small_integer(value));
      break;
    case Tag::big_integer:
      sink.put_digits(ValueAccess::digits(value));
      break;
    case Tag::floating:
      sink.put_float(*value.floating());
      break;
    case Tag::foreign:
      sink.put_string(value.foreign()->text_form());
      break;
    default:
      sink.put_string(*value.text());
      break;
  }
  return true;
}

// Writes a value into a sink.
template <typename Sink, typename Order>
class Writer {
 public:
  // Puts `source` and returns the sink. A scalar is put as the only item of a list without brackets.
  Sink write(const Source& source, Sink sink) {
    const bool is_scalar = source.list == nullptr && source.object == nullptr;
    if (is_scalar) {
      walk_.push(false, source.value, source.value + 1, typename Order::Cursor{});
    } else {
      open(source, sink);
    }
    while (!walk_.empty()) {
      sink.ensure_room();
      if (const JsonValue* nested = put_rest(walk_.top(), sink)) {
        open(*nested, sink);
      } else {
        walk_.pop();
        if (!walk_.empty()) sink.put(',');
      }
    }
    if (is_scalar) sink.drop_last();
    return sink;
  }

 private:
  // A partly written list or object.
  struct Level {
    bool is_object;
    const JsonValue* item;
    const JsonValue* items_end;
    typename Order::Cursor fields;
  };

  void open(const Source& source, Sink& sink) {
    if (source.list != nullptr) {
      sink.put('[');
      if (source.list->empty()) return sink.put(']');
      walk_.push(false, source.list->begin(), source.list->end(), typename Order::Cursor{});
    } else {
      sink.put('{');
      if (source.object->empty()) return sink.put('}');
      walk_.push(true, nullptr, nullptr, order_.open(*source.object));
    }
  }

  // Puts the rest of a level until it reaches a non-empty list or object, and returns that; at the end of the
  // level, returns a null pointer. Puts a comma after each value; the closing bracket replaces the last
  // comma.
  const JsonValue* put_rest(Level& level, Sink& sink) {
    while (const JsonValue* value = next(level, sink)) {
      if (!put_whole(*value, sink)) return value;
      sink.put(',');
    }
    sink.replace_last(level.is_object ? '}' : ']');
    return nullptr;
  }

  // The next value of a level, or null at its end. Puts the key of a field.
  const JsonValue* next(Level& level, Sink& sink) {
    if (level.is_object) {
      const JsonField* field = order_.next(level.fields);
      if (field == nullptr) return nullptr;
      sink.put_string(field->key);
      sink.put(':');
      return &field->value;
    }
    if (level.item == level.items_end) return nullptr;
    sink.ensure_room();
    return level.item++;
  }

  Order order_;
  WalkStack<Level> walk_;
};

template <FloatSizes kFloatSizes>
std::size_t count_bytes(const Source& source) {
  Writer<CountingSink<kFloatSizes>, InsertionOrder> writer;
  return writer.write(source, {}).size();
}

template <typename Order>
std::string text_of(const Source& source) {
  detail::TextMemory memory([&source] { return count_bytes<FloatSizes::maximal>(source); });
  Writer<MemorySink<decltype(memory)>, Order> writer;
  const char* end = writer.write(source, MemorySink(memory)).end();
  return std::move(memory).take(end);
}

}  // namespace

std::string compact_text(const JsonValue& value) {
  return text_of<InsertionOrder>(value);
}
std::string compact_text(const JsonList& list) {
  return text_of<InsertionOrder>(list);
}
std::string compact_text(const JsonObject& object) {
  return text_of<InsertionOrder>(object);
}
std::string canonical_text(const JsonValue& value) {
  return text_of<KeyOrder>(value);
}
std::string canonical_text(const JsonList& list) {
  return text_of<KeyOrder>(list);
}
std::string canonical_text(const JsonObject& object) {
  return text_of<KeyOrder>(object);
}

std::size_t compact_size(const JsonValue& value) {
  return count_bytes<FloatSizes::exact>(value);
}
std::size_t compact_size(const JsonList& list) {
  return count_bytes<FloatSizes::exact>(list);
}
std::size_t compact_size(const JsonObject& object) {
  return count_bytes<FloatSizes::exact>(object);
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
std::ostream& operator<<(std::ostream& out, const JsonField& field) {
  return out << compact_text(field.key) << ':' << field.value;
}
std::ostream& operator<<(std::ostream& out, const Text& text) {
  return out << text.view();
}

}  // namespace vantrex::values

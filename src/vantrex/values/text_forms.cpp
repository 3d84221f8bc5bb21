#include "vantrex/values/text_forms.h"

#include <algorithm>
#include <vector>

#include "vantrex/values/escapes.h"
#include "vantrex/values/number_text.h"
#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

using detail::Tag;
using detail::ValueAccess;

namespace {

// Where the writer's text goes. A sink takes plain bytes, integers and the
// contents of strings that may need escaping.
class CountingSink {
 public:
  void put(char /*byte*/) noexcept { ++size_; }
  void put(std::string_view bytes) noexcept { size_ += bytes.size(); }
  void put_integer(std::int64_t value) noexcept { size_ += integer_text_size(value); }
  void put_escaped(const Text& text) noexcept { size_ += text.size() + text.escape_gain(); }

  std::size_t size() const noexcept { return size_; }

 private:
  std::size_t size_ = 0;
};

class StringSink {
 public:
  explicit StringSink(std::size_t size) { out_.reserve(size); }

  void put(char byte) { out_ += byte; }
  void put(std::string_view bytes) { out_ += bytes; }
  void put_integer(std::int64_t value) {
    NumberBuffer buffer;
    put(integer_text(value, buffer));
  }
  void put_escaped(const Text& text) {
    std::string_view rest = text.view();
    for (std::size_t left = text.escape_gain(); left > 0;) {
      const auto* special = std::find_if(rest.begin(), rest.end(), detail::escape_gain);
      out_.append(rest.begin(), special);
      left -= detail::escape_gain(*special);
      put_escape(*special);
      rest.remove_prefix(static_cast<std::size_t>(special - rest.begin()) + 1);
    }
    out_ += rest;
  }

  std::string take() && { return std::move(out_); }

 private:
  void put_escape(char byte) {
    constexpr std::string_view kHexDigits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    if (const char letter = detail::short_escape(value)) {
      out_ += {'\\', letter};
    } else {
      out_ += "\\u00";
      out_ += {kHexDigits[value >> 4], kHexDigits[value & 15]};
    }
  }

  std::string out_;
};

// In which order an object's fields are written. next() gives each field once,
// then null; objects are opened and finished like the levels of a stack.
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

template <typename Sink, typename Order>
class Writer {
 public:
  explicit Writer(Sink& sink) noexcept : sink_(sink) {}

  void write(const JsonValue& value) {
    if (!put_whole(value)) finish();
  }
  template <typename Container>
  void write(const Container& container) {
    open(container);
    finish();
  }

 private:
  // A list or an object that is partly written.
  struct Level {
    bool is_object;
    bool has_items;
    const JsonValue* item;
    const JsonValue* items_end;
    typename Order::Cursor fields;
  };

  void open(const JsonList& list) {
    sink_.put('[');
    walk_.push({false, false, list.begin(), list.end(), {}});
  }
  void open(const JsonObject& object) {
    sink_.put('{');
    walk_.push({true, false, nullptr, nullptr, order_.open(object)});
  }

  void finish() {
    while (!walk_.empty()) {
      Level& level = walk_.top();
      const bool is_object = level.is_object;
      if (is_object ? put_fields(level) : put_items(level)) {
        sink_.put(is_object ? '}' : ']');
        walk_.pop();
      }
    }
  }

  // Both go on with a level until it is done, or until one of its values opens
  // a level of its own; then they return false.
  bool put_fields(Level& level) {
    while (const JsonField* field = order_.next(level.fields)) {
      separate(level);
      put(field->key);
      sink_.put(':');
      if (!put_whole(field->value)) return false;
    }
    return true;
  }
  bool put_items(Level& level) {
    while (level.item != level.items_end) {
      separate(level);
      if (!put_whole(*level.item++)) return false;
    }
    return true;
  }

  void separate(Level& level) {
    if (level.has_items) sink_.put(',');
    level.has_items = true;
  }

  void put(const Text& text) {
    sink_.put('"');
    sink_.put_escaped(text);
    sink_.put('"');
  }

  // Writes what needs no level of its own; else opens one and returns false.
  bool put_whole(const JsonValue& value) {
    NumberBuffer buffer;
    switch (ValueAccess::tag(value)) {
      case Tag::null:
        sink_.put("null");
        return true;
      case Tag::boolean:
        sink_.put(*value.boolean() ? std::string_view("true") : std::string_view("false"));
        return true;
      case Tag::integer:
        sink_.put_integer(ValueAccess::small_integer(value));
        return true;
      case Tag::big_integer:
        sink_.put(ValueAccess::digits(value));
        return true;
      case Tag::floating:
        sink_.put(float_text(*value.floating(), buffer));
        return true;
      case Tag::foreign:
        put(value.foreign()->text_form());
        return true;
      case Tag::list:
        open(*value.list());
        return false;
      case Tag::object:
        open(*value.object());
        return false;
      default:
        put(*value.text());
        return true;
    }
  }

  Sink& sink_;
  Order order_;
  WalkStack<Level> walk_;
};

template <typename Value>
std::size_t size_of(const Value& value) {
  CountingSink sink;
  Writer<CountingSink, InsertionOrder>(sink).write(value);
  return sink.size();
}

template <typename Order, typename Value>
std::string text_of(const Value& value) {
  StringSink sink(size_of(value));
  Writer<StringSink, Order>(sink).write(value);
  return std::move(sink).take();
}

}  // namespace

std::string compact_text(const JsonValue& value) {
  return text_of<InsertionOrder>(value);
}
std::string compact_text(const JsonObject& object) {
  return text_of<InsertionOrder>(object);
}
std::string canonical_text(const JsonValue& value) {
  return text_of<KeyOrder>(value);
}

std::size_t compact_size(const JsonValue& value) {
  return size_of(value);
}
std::size_t compact_size(const JsonList& list) {
  return size_of(list);
}
std::size_t compact_size(const JsonObject& object) {
  return size_of(object);
}

}  // namespace vantrex::values

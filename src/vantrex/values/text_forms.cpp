#include "vantrex/values/text_forms.h"

#include <algorithm>
#include <vector>

#include "vantrex/values/escapes.h"
#include "vantrex/values/level_size.h"
#include "vantrex/values/number_text.h"
#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

using detail::ContainerBlock;
using detail::Tag;
using detail::ValueAccess;

namespace {

// Where the writer's text goes. A sink takes plain bytes, integers and the
// contents of strings that may need escaping, and may know the text of a list
// or an object without being given it.
class CountingSink {
 public:
  void put(char /*byte*/) noexcept { ++size_; }
  void put(std::string_view bytes) noexcept { size_ += bytes.size(); }
  void put_integer(std::int64_t value) noexcept { size_ += integer_text_size(value); }
  void put_escaped(const Text& text) noexcept { size_ += text.size() + text.escape_gain(); }
  bool put_known(const ContainerBlock& block) noexcept {
    size_ += block.compact_size;
    return block.compact_size != 0;
  }

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
  static bool put_known(const ContainerBlock& /*block*/) noexcept { return false; }
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
  static Cursor open(const JsonField* begin, const JsonField* end) noexcept { return {begin, end}; }
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
  Cursor open(const JsonField* first, const JsonField* end) {
    const std::size_t begin = fields_.size();
    for (const JsonField* field = first; field != end; ++field) fields_.push_back(field);
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
  void write(const JsonList& list) { write_items(list.begin(), list.end()); }
  void write(const JsonObject& object) { write_items(object.begin(), object.end()); }

  template <typename Item>
  void write_items(const Item* begin, const Item* end) {
    open(begin, end);
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

  void open(const JsonValue* begin, const JsonValue* end) {
    sink_.put('[');
    walk_.push({false, false, begin, end, {}});
  }
  void open(const JsonField* begin, const JsonField* end) {
    sink_.put('{');
    walk_.push({true, false, nullptr, nullptr, order_.open(begin, end)});
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
        return put_known_or_open(*value.list());
      case Tag::object:
        return put_known_or_open(*value.object());
      default:
        put(*value.text());
        return true;
    }
  }

  template <typename Container>
  bool put_known_or_open(const Container& container) {
    const ContainerBlock* block = ValueAccess::block(container);
    if (block != nullptr && sink_.put_known(*block)) return true;
    open(container.begin(), container.end());
    return false;
  }

  Sink& sink_;
  Order order_;
  WalkStack<Level> walk_;
};

using Counter = Writer<CountingSink, InsertionOrder>;

template <typename Value>
std::size_t size_of(const Value& value) {
  CountingSink sink;
  Counter(sink).write(value);
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

template <typename Item>
std::size_t detail::level_size(const ContainerBlock& block) {
  CountingSink sink;
  Counter(sink).write_items(block.items<Item>(), block.items<Item>() + block.size);
  return sink.size();
}

template std::size_t detail::level_size<JsonValue>(const ContainerBlock& block);
template std::size_t detail::level_size<JsonField>(const ContainerBlock& block);

}  // namespace vantrex::values

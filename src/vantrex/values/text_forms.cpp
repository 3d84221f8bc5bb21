#include "vantrex/values/text_forms.h"

#include <algorithm>
#include <vector>

#include "vantrex/values/escapes.h"
#include "vantrex/values/number_text.h"
#include "vantrex/values/text_sink.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

using detail::CountingSink;

namespace {

// Takes the bytes themselves.
class StringSink {
 public:
  explicit StringSink(std::size_t size) { out_.reserve(size); }

  void put(char byte) { out_ += byte; }
  void put(std::string_view bytes) { out_ += bytes; }
  void put_integer(std::int64_t value) {
    NumberBuffer buffer;
    put(integer_text(value, buffer));
  }
  void put_float(double value) {
    NumberBuffer buffer;
    put(float_text(value, buffer));
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

  static bool put_measured(const JsonValue& /*container*/) noexcept { return false; }

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
  explicit Writer(Sink sink) noexcept : sink_(std::move(sink)) {}

  // Writes `value` and gives the sink back.
  Sink write(const JsonValue& value) && {
    if (!detail::put_scalar(value, sink_)) open(value);
    return finish();
  }
  template <typename Container>
  Sink write(const Container& container) && {
    open(container);
    return finish();
  }

 private:
  // A list or an object that is partly written.
  struct Level {
    bool is_object;
    bool has_items;
    const JsonValue* item;
    const JsonValue* items_end;
    typename Order::Cursor fields;

    void separate(Sink& sink) {
      if (has_items) sink.put(',');
      has_items = true;
    }
  };

  void open(const JsonList& list) {
    sink_.put('[');
    walk_.push({false, false, list.begin(), list.end(), {}});
  }
  void open(const JsonObject& object) {
    sink_.put('{');
    walk_.push({true, false, nullptr, nullptr, order_.open(object)});
  }
  void open(const JsonValue& container) {
    if (const JsonList* list = container.list()) {
      open(*list);
    } else {
      open(*container.object());
    }
  }

  Sink finish() {
    while (!walk_.empty()) {
      Level& level = walk_.top();
      const JsonValue* nested = level.is_object ? put_fields(level) : put_items(level);
      if (nested == nullptr) {
        walk_.pop();
      } else {
        open(*nested);
      }
    }
    return std::move(sink_);
  }

  // Both go on with a level until it is done, or until one of its values is a
  // list or an object, which they return. Their sink is a local one, which can
  // stay in registers.
  const JsonValue* put_fields(Level& level) {
    Sink sink = std::move(sink_);
    const JsonValue* nested = nullptr;
    while (nested == nullptr) {
      const JsonField* field = order_.next(level.fields);
      if (field == nullptr) {
        sink.put('}');
        break;
      }
      level.separate(sink);
      detail::put_text(field->key, sink);
      sink.put(':');
      if (!detail::put_scalar(field->value, sink)) nested = &field->value;
    }
    sink_ = std::move(sink);
    return nested;
  }
  const JsonValue* put_items(Level& level) {
    Sink sink = std::move(sink_);
    const JsonValue* nested = nullptr;
    while (nested == nullptr) {
      if (level.item == level.items_end) {
        sink.put(']');
        break;
      }
      const JsonValue& item = *level.item++;
      level.separate(sink);
      if (!detail::put_scalar(item, sink)) nested = &item;
    }
    sink_ = std::move(sink);
    return nested;
  }

  Sink sink_;
  Order order_;
  WalkStack<Level> walk_;
};

template <typename Value>
std::size_t size_of(const Value& value) {
  if (const std::size_t measured = detail::measured_size(value)) return measured;
  return Writer<CountingSink, InsertionOrder>(CountingSink()).write(value).size();
}

template <typename Order, typename Value>
std::string text_of(const Value& value) {
  return Writer<StringSink, Order>(StringSink(size_of(value))).write(value).take();
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

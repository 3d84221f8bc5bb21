// JsonList and JsonObject, and their deep copies.
#include <algorithm>
#include <cassert>
#include <new>
#include <utility>

#include "vantrex/values/block.h"
#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

namespace {

using detail::Container;
using detail::FieldIndex;
using detail::ValueAccess;
using detail::Values;

// Copies a tree: one block per list or object, no recursion.
class CopyWalk {
 public:
  template <typename Item>
  void copy(const Container<Item>& source, Container<Item>& copy) {
    open(source, copy);
    while (!walk_.empty()) {
      Level& level = walk_.top();
      if (level.source.done()) {
        walk_.pop();
      } else {
        fill(level.source.take(), level.copy.take());
      }
    }
  }

 private:
  // A container and its copy, with the position up to which nested containers are copied.
  struct Level {
    Values<const JsonValue> source;
    Values<JsonValue> copy;
  };

  // Copies the items of `source` into `copy`, which must be empty. Nested lists and objects are null until
  // the walk reaches them.
  template <typename Item>
  void open(const Container<Item>& source, Container<Item>& copy) {
    if (source.empty()) return;
    Item* const items = ValueAccess::items(copy) = detail::new_block<Item>(source.size());
    bool has_containers = false;
    for (const Item& item : source) {
      has_containers |= place(item, items + copy.size());
      ++ValueAccess::size(copy);
    }
    detail::rebuild_index(items, copy.size());
    if (has_containers) walk_.push(Values<const JsonValue>(source), Values<JsonValue>(copy));
  }

  // Constructs a copy in raw memory. Returns whether it is a container to fill.
  static bool place(const JsonField& field, JsonField* copy) noexcept {
    new (&copy->key) Text(field.key);
    return place(field.value, &copy->value);
  }
  static bool place(const JsonValue& value, JsonValue* copy) noexcept {
    const bool is_container = value.list() != nullptr || value.object() != nullptr;
    new (copy) JsonValue(is_container ? nullptr : value);
    return is_container;
  }

  void fill(const JsonValue& source, JsonValue& copy) {
    if (const JsonList* list = source.list()) {
      copy = JsonList();
      open(*list, *copy.list());
    } else if (const JsonObject* object = source.object()) {
      copy = JsonObject();
      open(*object, *copy.object());
    }
  }

  WalkStack<Level> walk_;
};

}  // namespace

template <typename Item>
Container<Item>::Container(const Container& other) : Container() {
  CopyWalk walk;
  walk.copy(other, *this);
}
template Container<JsonValue>::Container(const Container&);
template Container<JsonField>::Container(const Container&);

constinit const JsonValue detail::kAbsent(nullptr);

void JsonList::push_back(JsonValue item) {
  make_room();
  new (items_ + head_.size) JsonValue(std::move(item));
  ++head_.size;
}

void JsonList::truncate(std::size_t count) noexcept {
  while (head_.size > count) items_[--head_.size].~JsonValue();
}

// A few fields are compared pairwise: the new field acts as the sentinel of its own search.
JsonObject::JsonObject(std::initializer_list<FieldInit>&& fields) {
  reserve(fields.size());
  if (fields.size() > FieldIndex::kUnindexedFields) {
    for (const FieldInit& field : fields) set(field.key, std::move(field.value));
    return;
  }
  for (const FieldInit& field : fields) {
    auto* const last = new (items_ + head_.size) JsonField{field.key.text(), std::move(field.value)};
    JsonField* first = items_;
    while (last->key != first->key) ++first;
    if (first == last) {
      ++head_.size;
    } else {
      first->value = std::move(last->value);
      last->~JsonField();
    }
  }
}

const JsonValue* JsonObject::find(StringArgument key) const& noexcept {
  const std::string_view bytes = key;
  if (head_.size > FieldIndex::kUnindexedFields) {
    const std::size_t position = detail::index_of(items_)->find(bytes, head_.size);
    return position == head_.size ? nullptr : &items_[position].value;
  }
  for (const JsonField& field : *this) {
    if (field.key.view() == bytes) return &field.value;
  }
  return nullptr;
}

JsonValue* JsonObject::find(StringArgument key) & noexcept {
  return const_cast<JsonValue*>(std::as_const(*this).find(key));  // NOLINT(*-const-cast): is not const
}

void JsonObject::set(const TextArgument& key, JsonValue value) {
  if (JsonValue* present = find(key.view())) {
    *present = std::move(value);
  } else {
    append_new(key.text(), std::move(value));
  }
}

void JsonObject::append(const TextArgument& key, JsonValue value) {
  assert(!contains(key.view()));
  append_new(key.text(), std::move(value));
}

void JsonObject::append_new(Text key, JsonValue value) {
  make_room();
  new (items_ + head_.size) JsonField{std::move(key), std::move(value)};
  if (const auto index = detail::index_of(items_)) index->add(head_.size);
  ++head_.size;
}

std::optional<JsonValue> JsonObject::remove(StringArgument key) noexcept {
  JsonValue* found = find(key);
  if (found == nullptr) return std::nullopt;
  auto* field =
      std::find_if(items_, items_ + head_.size, [&](const JsonField& each) { return &each.value == found; });
  std::optional<JsonValue> removed(std::move(*found));
  std::move(field + 1, items_ + head_.size, field);
  items_[--head_.size].~JsonField();
  detail::rebuild_index(items_, size());
  return removed;
}

}  // namespace vantrex::values

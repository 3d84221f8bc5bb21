#include "vantrex/values/snapshot.h"

#include <algorithm>
#include <memory>

#include "vantrex/values/arena.h"
#include "vantrex/values/field_index.h"
#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

using detail::ContainerBlock;
using detail::FieldIndex;
using detail::Tag;
using detail::TextBlock;
using detail::ValueAccess;

namespace {

// Texts of this many bytes are kept by count instead of copied.
constexpr std::size_t kKeptTextBytes = 4096;

struct ArenaRelease {
  void operator()(Arena* arena) const noexcept { arena->release(); }
};

class SnapshotBuilder {
 public:
  explicit SnapshotBuilder(NullFields null_fields) noexcept : drop_nulls_(null_fields == NullFields::drop) {}

  // The packed copy of the tree below `source`, counted once, or null when
  // nothing is left of it.
  ContainerBlock* copy(const ContainerBlock* source, Tag kind) {
    if (source == nullptr || count(source, kind) == 0) return nullptr;
    arena_.reset(Arena::create(kSpareBytes + std::size_t{2} * source->size * item_bytes(kind)));
    ContainerBlock* root = new_copy(source, kind);
    walk_.push({source, root, 0, kind});
    while (!walk_.empty()) {
      Frame& frame = walk_.top();
      const Frame nested = frame.kind == Tag::list ? copy_items(frame) : copy_fields(frame);
      if (nested.copy == nullptr) {
        walk_.pop();
      } else {
        walk_.push(nested);
      }
    }
    static_cast<void>(arena_.release());
    return root;
  }

 private:
  static constexpr std::size_t kSpareBytes = 256;

  // A container that is partly copied: the next item to look at.
  struct Frame {
    const ContainerBlock* source;
    ContainerBlock* copy;
    std::uint32_t next;
    Tag kind;
  };

  static std::size_t item_bytes(Tag kind) noexcept {
    return kind == Tag::list ? sizeof(JsonValue) : sizeof(JsonField);
  }

  bool dropped(const JsonField& field) const noexcept { return drop_nulls_ && field.value.is_null(); }

  // How many items the copy of `source` will hold.
  std::size_t count(const ContainerBlock* source, Tag kind) const noexcept {
    if (kind == Tag::list || !drop_nulls_) return source->size;
    const auto* fields = source->items<JsonField>();
    return static_cast<std::size_t>(std::count_if(
        fields, fields + source->size, [](const JsonField& field) { return !field.value.is_null(); }));
  }

  // The copy of `source`, still empty; null for a container that stays empty.
  ContainerBlock* new_copy(const ContainerBlock* source, Tag kind) {
    const std::size_t size = source == nullptr ? 0 : count(source, kind);
    if (size == 0) return nullptr;
    void* memory = arena_->allocate(sizeof(ContainerBlock) + size * item_bytes(kind));
    return new (memory) ContainerBlock{arena_.get(), {nullptr}, 0, static_cast<std::uint32_t>(size)};
  }

  // Both go on with a container until it is done, or until one of its items is
  // a container to be filled first, which they return.
  Frame copy_items(Frame& frame) {
    const auto* items = frame.source->items<JsonValue>();
    auto* copies = frame.copy->items<JsonValue>();
    while (frame.next < frame.source->size) {
      const JsonValue& item = items[frame.next++];
      JsonValue* copy = copies + frame.copy->size++;
      ValueAccess::place_uncounted(copy, item);
      if (!is_owning(item)) continue;
      if (const Frame nested = copy_owned(item, copy); nested.copy != nullptr) return nested;
    }
    return {};
  }

  Frame copy_fields(Frame& frame) {
    const auto* fields = frame.source->items<JsonField>();
    auto* copies = frame.copy->items<JsonField>();
    while (frame.next < frame.source->size) {
      const JsonField& field = fields[frame.next++];
      if (dropped(field)) continue;
      JsonField* copy = copies + frame.copy->size++;
      ValueAccess::place_uncounted(copy, field);
      if (is_owning(field.key)) copy_text(field.key, &copy->key);
      if (!is_owning(field.value)) continue;
      if (const Frame nested = copy_owned(field.value, &copy->value); nested.copy != nullptr) return nested;
    }
    if (frame.copy->size > FieldIndex::kUnindexedFields) add_index(frame.copy);
    return {};
  }

  void add_index(ContainerBlock* object) {
    void* memory = arena_->allocate(FieldIndex::bytes_for(object->size));
    object->index = FieldIndex::create(memory, object->size, object->items<JsonField>(), object->size);
  }

  template <typename Value>
  static bool is_owning(const Value& value) noexcept {
    return detail::owns_block(ValueAccess::tag(value));
  }

  // Replaces what `copy` shares with `source`; the container to be filled when
  // that is one.
  Frame copy_owned(const JsonValue& source, JsonValue* copy) {
    const Tag tag = ValueAccess::tag(source);
    if (tag == Tag::shared_text) {
      copy_text(*source.text(), copy);
    } else if (tag == Tag::foreign || tag == Tag::big_integer) {
      arena_->keep(source);
    } else {
      const ContainerBlock* block = ValueAccess::block(source);
      ContainerBlock* opened = new_copy(block, tag);
      ValueAccess::place_container(copy, tag, opened);
      return {block, opened, 0, tag};
    }
    return {};
  }

  void copy_text(const Text& source, void* copy) {
    const TextBlock* block = ValueAccess::text_block(source);
    if (block->arena == nullptr && block->size >= kKeptTextBytes) {
      arena_->keep(source);
      return;
    }
    void* memory = arena_->allocate(sizeof(TextBlock) + block->size);
    auto* text = new (memory) TextBlock{arena_.get(), {0}, block->size, block->escape_gain};
    std::memcpy(text->characters(), block->characters(), block->size);
    ValueAccess::place_text(copy, text);
  }

  bool drop_nulls_;
  std::unique_ptr<Arena, ArenaRelease> arena_;
  WalkStack<Frame> walk_;
};

}  // namespace

JsonList snapshot(const JsonList& source, NullFields null_fields) {
  return ValueAccess::list_of(SnapshotBuilder(null_fields).copy(ValueAccess::block(source), Tag::list));
}

JsonObject snapshot(const JsonObject& source, NullFields null_fields) {
  return ValueAccess::object_of(SnapshotBuilder(null_fields).copy(ValueAccess::block(source), Tag::object));
}

JsonValue snapshot(const JsonValue& source, NullFields null_fields) {
  if (const JsonList* list = source.list()) return snapshot(*list, null_fields);
  if (const JsonObject* object = source.object()) return snapshot(*object, null_fields);
  return source;
}

}  // namespace vantrex::values

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
    arena_.reset(Arena::create(kSpareBytes + 2 * source->size * item_bytes(kind)));
    ContainerBlock* root = open(source, kind);
    while (!walk_.empty()) {
      const Frame frame = walk_.top();
      walk_.pop();
      if (frame.kind == Tag::list) {
        copy_items(frame);
      } else {
        copy_fields(frame);
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

  // The copy of `source`, still empty, with the work to fill it on the stack;
  // null for a container that will be empty.
  ContainerBlock* open(const ContainerBlock* source, Tag kind) {
    const std::size_t size = source == nullptr ? 0 : count(source, kind);
    if (size == 0) return nullptr;
    void* memory = arena_->allocate(sizeof(ContainerBlock) + size * item_bytes(kind));
    auto* block = new (memory) ContainerBlock{arena_.get(), {nullptr}, 0, static_cast<std::uint32_t>(size)};
    walk_.push({source, block, 0, kind});
    return block;
  }

  void copy_items(Frame frame) {
    const auto* items = frame.source->items<JsonValue>();
    while (frame.next < frame.source->size) {
      const JsonValue& item = items[frame.next++];
      if (copy_value(frame, item, frame.copy->items<JsonValue>() + frame.copy->size++)) return;
    }
  }

  void copy_fields(Frame frame) {
    const auto* fields = frame.source->items<JsonField>();
    while (frame.next < frame.source->size) {
      const JsonField& field = fields[frame.next++];
      if (dropped(field)) continue;
      JsonField* copy = frame.copy->items<JsonField>() + frame.copy->size++;
      copy_text(field.key, &copy->key);
      if (copy_value(frame, field.value, &copy->value)) return;
    }
    if (frame.copy->size > FieldIndex::kUnindexedFields) {
      frame.copy->index =
          FieldIndex::create(arena_->allocate(FieldIndex::bytes_for(frame.copy->size)), frame.copy->size,
                             frame.copy->items<JsonField>(), frame.copy->size);
    }
  }

  // Copies `source` to `memory`; true when that opened a container, which is
  // then to be filled before the rest of `frame`.
  bool copy_value(const Frame& frame, const JsonValue& source, JsonValue* memory) {
    const Tag tag = ValueAccess::tag(source);
    if (tag == Tag::list || tag == Tag::object) {
      ValueAccess::place_container(memory, tag, nullptr);
      walk_.push(frame);
      ContainerBlock* block = open(ValueAccess::block(source), tag);
      ValueAccess::place_container(memory, tag, block);
      if (block != nullptr) return true;
      walk_.pop();
    } else if (tag == Tag::shared_text) {
      copy_text(*source.text(), memory);
    } else {
      if (tag == Tag::foreign || tag == Tag::big_integer) arena_->keep(source);
      ValueAccess::place_uncounted(memory, source);
    }
    return false;
  }

  void copy_text(const Text& source, void* memory) {
    if (ValueAccess::tag(source) == Tag::shared_text) {
      const TextBlock* block = ValueAccess::text_block(source);
      if (block->arena != nullptr || block->size < kKeptTextBytes) {
        void* bytes = arena_->allocate(sizeof(TextBlock) + block->size);
        auto* copy = new (bytes) TextBlock{arena_.get(), {0}, block->size, block->escape_gain};
        std::memcpy(copy->characters(), block->characters(), block->size);
        ValueAccess::place_text(memory, copy);
        return;
      }
      arena_->keep(source);
    }
    ValueAccess::place_uncounted(memory, source);
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

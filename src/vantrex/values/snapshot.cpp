#include "vantrex/values/snapshot.h"

#include <algorithm>
#include <memory>

#include "vantrex/values/arena.h"
#include "vantrex/values/field_index.h"
#include "vantrex/values/text_sink.h"
#include "vantrex/values/value_access.h"
#include "vantrex/values/walk_stack.h"

namespace vantrex::values {

using detail::ContainerBlock;
using detail::CountingSink;
using detail::FieldIndex;
using detail::Tag;
using detail::TextBlock;
using detail::ValueAccess;

namespace {

// Texts of this many bytes are kept by count instead of copied.
constexpr std::size_t kKeptTextBytes = 4096;

enum class Measuring { no, yes };

struct ArenaRelease {
  void operator()(Arena* arena) const noexcept { arena->release(); }
};

template <Measuring kMeasuring>
class SnapshotBuilder {
 public:
  explicit SnapshotBuilder(NullFields null_fields, const KeySet* marked = nullptr) noexcept
      : drop_nulls_(null_fields == NullFields::drop), marked_(marked) {}

  // The packed copy of the tree below `source`, counted once, or null when
  // nothing is left of it.
  ContainerBlock* copy(const ContainerBlock* source, Tag kind) {
    if (source == nullptr || count(source, kind) == 0) return nullptr;
    arena_.reset(Arena::create(kSpareBytes + std::size_t{2} * source->size * item_bytes(kind), marked_));
    ContainerBlock* root = new_copy(source, kind);
    walk_.push({source, root, 0, kind});
    while (!walk_.empty()) {
      Frame& frame = walk_.top();
      const Frame nested = frame.kind == Tag::list ? copy_items(frame) : copy_fields(frame);
      if (nested.copy == nullptr) {
        leave();
      } else {
        walk_.push(nested);
      }
    }
    static_cast<void>(arena_.release());
    return root;
  }

 private:
  static constexpr bool kMeasures = kMeasuring == Measuring::yes;
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

  // Goes back to the container above, whose text is that much longer.
  void leave() noexcept {
    const ContainerBlock& left = *walk_.top().copy;
    walk_.pop();
    if (!kMeasures || walk_.empty()) return;
    ContainerBlock& above = *walk_.top().copy;
    above.text_bytes += left.text_bytes;
    above.holds_marked |= left.holds_marked;
  }

  // The copy of `source`, still empty; null for a container that stays empty.
  ContainerBlock* new_copy(const ContainerBlock* source, Tag kind) {
    const std::size_t size = source == nullptr ? 0 : count(source, kind);
    if (size == 0) return nullptr;
    void* memory = arena_->allocate(sizeof(ContainerBlock) + size * item_bytes(kind));
    return new (memory) ContainerBlock{
        arena_.get(), {nullptr}, 0, {0}, {kMeasures ? detail::punctuation_size(size, kind) : 0}};
  }

  // Both go on with a container until it is done, or until one of its items is
  // a container to be filled first, which they return.
  Frame copy_items(Frame& frame) {
    const ContainerBlock& source = *frame.source;
    const auto* item = source.items<JsonValue>() + frame.next;
    const auto* const end = source.items<JsonValue>() + source.size;
    auto* copy = frame.copy->template items<JsonValue>() + frame.next;
    CountingSink sink;
    Frame nested{};
    for (; nested.copy == nullptr && item != end; ++item, ++copy) {
      ValueAccess::place_uncounted(copy, *item);
      nested = finish_value(*item, copy, sink);
    }
    if (nested.copy != nullptr && item != end) prefetch(*item);
    frame.next = static_cast<std::uint32_t>(item - source.items<JsonValue>());
    frame.copy->size = frame.next;
    if (kMeasures) frame.copy->text_bytes += sink.size();
    return nested;
  }

  Frame copy_fields(Frame& frame) {
    const ContainerBlock& source = *frame.source;
    const auto* field = source.items<JsonField>() + frame.next;
    const auto* const end = source.items<JsonField>() + source.size;
    auto* copy = frame.copy->template items<JsonField>() + frame.copy->size;
    CountingSink sink;
    Frame nested{};
    for (; nested.copy == nullptr && field != end; ++field) {
      if (dropped(*field)) continue;
      ValueAccess::place_uncounted(copy, *field);
      if (ValueAccess::tag(field->key) == Tag::shared_text) copy_text(field->key, &copy->key);
      if (kMeasures) {
        detail::put_text(field->key, sink);
        if (marked_->contains(field->key)) frame.copy->holds_marked = 1;
      }
      nested = finish_value(field->value, &copy->value, sink);
      ++copy;
    }
    frame.next = static_cast<std::uint32_t>(field - source.items<JsonField>());
    frame.copy->size = static_cast<std::uint32_t>(copy - frame.copy->template items<JsonField>());
    if (kMeasures) frame.copy->text_bytes += sink.size();
    if (nested.copy == nullptr && frame.copy->size > FieldIndex::kUnindexedFields) add_index(frame.copy);
    return nested;
  }

  // Gets the block of a container that is copied next on its way from memory, as
  // much of it as a usual object takes. What lies behind a smaller one does no
  // harm, as nothing is read.
  static void prefetch(const JsonValue& next) noexcept {
    if (!ValueAccess::is_container(next)) return;
    constexpr std::uintptr_t kCacheLine = 64;
    constexpr std::uintptr_t kPrefetched = 5 * kCacheLine;
    const auto block = reinterpret_cast<std::uintptr_t>(ValueAccess::block(next));
    for (std::uintptr_t offset = 0; offset < kPrefetched; offset += kCacheLine) {
      // NOLINTNEXTLINE(performance-no-int-to-ptr): no pointer reaches beyond the block.
      __builtin_prefetch(reinterpret_cast<const void*>(block + offset));
    }
  }

  // Measures `source` and replaces what `copy` shares with it. A container to be
  // filled is returned; leave() measures it.
  [[gnu::always_inline]] Frame finish_value(const JsonValue& source, JsonValue* copy, CountingSink& sink) {
    const Tag tag = ValueAccess::tag(source);
    if (tag == Tag::list || tag == Tag::object) {
      const ContainerBlock* block = ValueAccess::block(source);
      ContainerBlock* opened = new_copy(block, tag);
      ValueAccess::place_container(copy, tag, opened);
      if (opened == nullptr) sink.put("[]");
      return {block, opened, 0, tag};
    }
    if (kMeasures) detail::put_scalar(source, sink);
    if (tag == Tag::shared_text) {
      copy_text(*source.text(), copy);
    } else if (tag == Tag::foreign || tag == Tag::big_integer) {
      arena_->keep(source);
    }
    return {};
  }

  void add_index(ContainerBlock* object) {
    void* memory = arena_->allocate(FieldIndex::bytes_for(object->size));
    object->index = FieldIndex::create(memory, object->size, object->items<JsonField>(), object->size);
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
  const KeySet* marked_;
  std::unique_ptr<Arena, ArenaRelease> arena_;
  WalkStack<Frame> walk_;
};

}  // namespace

JsonList snapshot(const JsonList& source, NullFields null_fields) {
  return ValueAccess::list_of(
      SnapshotBuilder<Measuring::no>(null_fields).copy(ValueAccess::block(source), Tag::list));
}

JsonObject snapshot(const JsonObject& source, NullFields null_fields) {
  return ValueAccess::object_of(
      SnapshotBuilder<Measuring::no>(null_fields).copy(ValueAccess::block(source), Tag::object));
}
JsonObject measured_snapshot(const JsonObject& source, NullFields null_fields, const KeySet& marked) {
  return ValueAccess::object_of(
      SnapshotBuilder<Measuring::yes>(null_fields, &marked).copy(ValueAccess::block(source), Tag::object));
}

JsonValue snapshot(const JsonValue& source, NullFields null_fields) {
  if (const JsonList* list = source.list()) return snapshot(*list, null_fields);
  if (const JsonObject* object = source.object()) return snapshot(*object, null_fields);
  return source;
}

namespace {

bool may_hold(const ContainerBlock* block, const KeySet& keys) noexcept {
  if (block == nullptr) return false;
  return block->arena == nullptr || block->arena->marked_keys() != &keys || block->holds_marked != 0;
}

}  // namespace

bool may_hold(const JsonValue& value, const KeySet& keys) noexcept {
  return ValueAccess::is_container(value) && may_hold(ValueAccess::block(value), keys);
}
bool may_hold(const JsonObject& object, const KeySet& keys) noexcept {
  return may_hold(ValueAccess::block(object), keys);
}

}  // namespace vantrex::values

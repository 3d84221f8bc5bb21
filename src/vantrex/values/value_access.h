// ValueAccess: what the files of this folder may see of a value's 16 bytes.
#pragma once

#include <cstring>
#include <new>
#include <utility>

#include "vantrex/values/block_memory.h"
#include "vantrex/values/json_value.h"

namespace vantrex::values::detail {

struct ValueAccess {
  static Tag tag(const JsonValue& value) noexcept { return value.tag(); }
  static Tag tag(const Text& text) noexcept { return text.tag(); }

  static bool is_container(const JsonValue& value) noexcept {
    return value.tag() == Tag::list || value.tag() == Tag::object;
  }

  // The block of a list or an object; null when it never held anything.
  static ContainerBlock* block(const JsonList& list) noexcept { return list.block_; }
  static ContainerBlock* block(const JsonObject& object) noexcept { return object.block_; }
  static ContainerBlock* block(const JsonValue& container) noexcept {
    return container.tag() == Tag::list ? block(container.plain_.as.list) : block(container.plain_.as.object);
  }

  // Whether the value is a list or an object that a copy cannot share.
  static bool has_own_block(const JsonValue& value) noexcept {
    return is_container(value) && block(value) != nullptr && block(value)->arena == nullptr;
  }

  // The block of a long text.
  static const TextBlock* text_block(const Text& text) noexcept { return text.shared_.block; }

  static std::int64_t small_integer(const JsonValue& value) noexcept { return value.plain_.as.integer; }
  static std::string_view digits(const JsonValue& value) noexcept {
    return {value.plain_.as.digits->characters(), value.plain_.as.digits->size};
  }

  // An integer beyond 64 bits is held as the text of its digits, always a
  // counted one, since it is longer than what lies inside a text.
  static void place_big_integer(JsonValue& value, Integer integer) noexcept {
    value.text_ = std::move(integer.digits_);
    value.plain_.tag = Tag::big_integer;
  }
  static Integer big_integer(const JsonValue& value) noexcept {
    Text digits;
    digits.shared_ = {Tag::shared_text, 0, value.plain_.as.digits};
    retain(value.plain_.as.digits);
    return Integer(std::move(digits));
  }

  // A list or an object that takes `block` over.
  static JsonList list_of(ContainerBlock* block) noexcept { return JsonList(block); }
  static JsonObject object_of(ContainerBlock* block) noexcept { return JsonObject(block); }

  // The arena that the block of `text` or `value`, which owns one, lies in; null
  // when that is outside arenas.
  static Arena* arena(const Text& text) noexcept { return text_block(text)->arena; }
  static Arena* arena(const JsonValue& value) noexcept {
    if (tag(value) == Tag::foreign) return nullptr;
    if (!is_container(value)) return value.plain_.as.digits->arena;  // where a text has its block, too
    return block(value) == nullptr ? nullptr : block(value)->arena;
  }

  // Counts one more reference to the block of `text`, which owns one.
  static void count(const Text& text) noexcept { retain(text.shared_.block); }
  // Counts one more reference to what `value` refers to, which must not be a
  // list or an object with a block of its own.
  static void count(const JsonValue& value) noexcept {
    if (!owns_block(value.tag())) return;
    if (is_container(value)) {
      if (const ContainerBlock* shared = block(value)) share(shared);
    } else if (value.tag() == Tag::foreign) {
      ForeignValue::retain(value.plain_.as.foreign.box_);
    } else {
      retain(value.plain_.as.digits);  // where a text has its block, too
    }
  }

  // Makes raw memory the same bytes as `source`, counting nothing.
  template <typename Value>
  static void place_uncounted(void* memory, const Value& source) noexcept {
    std::memcpy(memory, static_cast<const void*>(&source), sizeof(Value));
  }
  // Makes raw memory a list, an object or a text of `block`.
  static void place_container(void* memory, Tag tag, ContainerBlock* block) noexcept {
    auto* value = new (memory) JsonValue(nullptr);
    value->plain_.tag = tag;
    if (tag == Tag::list) {
      new (&value->plain_.as.list) JsonList(block);
    } else {
      new (&value->plain_.as.object) JsonObject(block);
    }
  }
  static void place_text(void* memory, TextBlock* block) noexcept {
    auto* text = new (memory) Text();
    text->shared_ = {Tag::shared_text, 0, block};
  }
};

}  // namespace vantrex::values::detail

// The implementation of nlohmann_json.h. Include that header instead.
#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "vantrex/adapters/nlohmann_json.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"

namespace vantrex::adapters {

namespace detail {

// Converts from nlohmann's type. Iterative, with its own stack.
template <NlohmannJson Json>
class FromNlohmann {
 public:
  explicit FromNlohmann(const char* whole) : whole_(whole) {}

  values::JsonValue convert(const Json& json) {
    if (!json.is_structured()) return scalar(json);
    open(json);
    while (true) {
      if (open_.back().next != open_.back().source->cend()) {
        const Json& item = *open_.back().next;
        if (item.is_structured()) {
          open(item);
        } else {
          add(scalar(item));
        }
        continue;
      }
      values::JsonValue made = std::move(open_.back().made);
      open_.pop_back();
      if (open_.empty()) return made;
      add(std::move(made));
    }
  }

 private:
  // An open container. `made` holds the converted items before `next`.
  struct Open {
    const Json* source;
    typename Json::const_iterator next;
    values::JsonValue made;
  };

  void open(const Json& source) {
    open_.push_back({&source, source.cbegin(), nullptr});
    if (source.is_object()) {
      open_.back().made = values::JsonObject();
      open_.back().made.object()->reserve(source.size());
    } else {
      open_.back().made = values::JsonList();
      open_.back().made.list()->reserve(source.size());
    }
  }

  void add(values::JsonValue item) {
    Open& parent = open_.back();
    if (values::JsonObject* object = parent.made.object()) {
      object->set(text(parent.next.key(), "the key"), std::move(item));
    } else {
      parent.made.list()->push_back(std::move(item));
    }
    ++parent.next;
  }

  values::JsonValue scalar(const Json& json) const {
    using Type = typename Json::value_t;
    switch (json.type()) {
      case Type::boolean:
        return json.template get<bool>();
      case Type::number_integer:
        return json.template get<std::int64_t>();
      case Type::number_unsigned:
        return json.template get<std::uint64_t>();
      case Type::number_float:
        return json.template get<double>();
      case Type::string:
        return text(json.template get_ref<const std::string&>(), "the text");
      case Type::binary:
        fail("binary data has no JSON form");
      case Type::discarded:
        fail("a value that the parser discarded has no JSON form");
      case Type::null:
      case Type::object:
      case Type::array:
        break;
    }
    return nullptr;
  }

  values::Text text(const std::string& bytes, const std::string& what) const {
    try {
      return values::Text(bytes);
    } catch (const values::InvalidUtf8& error) {
      fail(what + " is no well-formed UTF-8 at byte " + std::to_string(error.byte_offset()));
    }
  }

  [[noreturn]] void fail(const std::string& why) const {
    typename Json::json_pointer path;
    for (const Open& each : open_) {
      if (each.source->is_object()) {
        path /= each.next.key();
      } else {
        path /= static_cast<std::size_t>(each.next - each.source->cbegin());
      }
    }
    throw NotConvertible(whole_, values::Text::lossy(path.to_string()), why);
  }

  const char* whole_;
  std::vector<Open> open_;
};

// Converts to nlohmann's type, likewise.
template <NlohmannJson Json>
class ToNlohmann {
 public:
  explicit ToNlohmann(const char* whole) : whole_(whole) {}

  Json convert(const values::JsonValue& value) {
    if (!is_container(value)) return scalar(value);
    open(value);
    while (true) {
      const Open& innermost = open_.back();
      if (innermost.next < size(*innermost.source)) {
        const values::JsonValue& next = item(innermost);
        if (is_container(next)) {
          open(next);
        } else {
          add(scalar(next));
        }
        continue;
      }
      Json made = std::move(open_.back().made);
      open_.pop_back();
      if (open_.empty()) return made;
      add(std::move(made));
    }
  }

 private:
  using Array = typename Json::array_t;
  using Object = typename Json::object_t;

  struct Open {
    const values::JsonValue* source;
    std::size_t next;
    Json made;
  };

  static bool is_container(const values::JsonValue& value) {
    return value.list() != nullptr || value.object() != nullptr;
  }
  static std::size_t size(const values::JsonValue& container) {
    return container.list() != nullptr ? container.list()->size() : container.object()->size();
  }
  static const values::JsonField& field(const Open& parent) {
    return parent.source->object()->begin()[parent.next];
  }
  static const values::JsonValue& item(const Open& parent) {
    const values::JsonList* list = parent.source->list();
    return list != nullptr ? (*list)[parent.next] : field(parent).value;
  }

  // Reserves all room at once: a growing ordered_map would copy its items.
  void open(const values::JsonValue& source) {
    open_.push_back({&source, 0, source.list() != nullptr ? Json::array() : Json::object()});
    Json& made = open_.back().made;
    if (made.is_array()) {
      made.template get_ref<Array&>().reserve(size(source));
    } else if constexpr (requires(Object object) { object.reserve(0); }) {
      made.template get_ref<Object&>().reserve(size(source));
    }
  }

  // Keys are unique, so the lookup is skipped where it would be a search.
  void add(Json item) {
    Open& parent = open_.back();
    if (parent.made.is_array()) {
      parent.made.template get_ref<Array&>().push_back(std::move(item));
    } else {
      Object& object = parent.made.template get_ref<Object&>();
      std::string key(field(parent).key.view());
      if constexpr (requires { object.emplace_back(std::move(key), std::move(item)); }) {
        object.emplace_back(std::move(key), std::move(item));
      } else {
        object.emplace(std::move(key), std::move(item));
      }
    }
    ++parent.next;
  }

  Json scalar(const values::JsonValue& value) const {
    if (const auto boolean = value.boolean()) return *boolean;
    if (const auto integer = value.integer()) return number(*integer);
    if (const auto floating = value.floating()) return *floating;
    if (const auto string = value.string()) return std::string(*string);
    if (const auto* foreign = value.foreign()) return std::string(foreign->text_form().view());
    return nullptr;
  }

  Json number(const values::Integer& integer) const {
    if (const auto number = integer.to<std::int64_t>()) return *number;
    if (const auto number = integer.to<std::uint64_t>()) return *number;
    fail("the integer " + integer.digits() + " does not fit in 64 bits");
  }

  [[noreturn]] void fail(const std::string& why) const {
    typename Json::json_pointer path;
    for (const Open& each : open_) {
      if (each.source->list() != nullptr) {
        path /= each.next;
      } else {
        path /= std::string(field(each).key.view());
      }
    }
    throw NotConvertible(whole_, values::Text::lossy(path.to_string()), why);
  }

  const char* whole_;
  std::vector<Open> open_;
};

inline values::JsonObject object_from(const nlohmann::ordered_json& json, const char* whole) {
  if (!json.is_object()) {
    throw NotConvertible(whole, "", std::string("must be an object, not of type ") + json.type_name());
  }
  values::JsonValue value = FromNlohmann<nlohmann::ordered_json>(whole).convert(json);
  return std::move(*value.object());
}

}  // namespace detail

template <NlohmannJson Json>
values::JsonValue from_nlohmann(const Json& json) {
  return detail::FromNlohmann<Json>("the value").convert(json);
}

template <NlohmannJson Json>
Json to_nlohmann(const values::JsonValue& value) {
  return detail::ToNlohmann<Json>("the value").convert(value);
}

inline nlohmann::ordered_json finish_answer(const nlohmann::ordered_json& response,
                                            std::string_view tool_name, FinishOptions options) {
  values::JsonObject answer = detail::object_from(response, "the answer");
  std::optional<values::JsonObject> arguments;
  if (options.arguments != nullptr) {
    arguments = detail::object_from(*options.arguments, "the request's arguments");
  }
  values::JsonValue finished =
      tool_handlers::next_steps::finish_answer(std::move(answer), tool_name,
                                               {.action = std::move(options.action),
                                                .arguments = arguments ? &*arguments : nullptr,
                                                .freshness = std::move(options.freshness),
                                                .serves = options.serves,
                                                .catalogue = options.catalogue});
  return detail::ToNlohmann<nlohmann::ordered_json>("the finished answer").convert(finished);
}

}  // namespace vantrex::adapters

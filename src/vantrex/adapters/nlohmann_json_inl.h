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

// Why a value is refused, thrown on the way to NotConvertible.
struct Refused {
  std::string why;
};

// An open container of nlohmann's. `made` holds the converted items before the next one.
template <NlohmannJson Json>
class FromNlohmann {
 public:
  using Source = Json;
  using Path = typename Json::json_pointer;

  values::JsonValue made;

  explicit FromNlohmann(const Json& source) : source_(&source), next_(source.cbegin()) {
    if (source.is_object()) {
      made = values::JsonObject();
      made.object()->reserve(source.size());
    } else {
      made = values::JsonList();
      made.list()->reserve(source.size());
    }
  }

  static bool is_container(const Json& json) noexcept { return json.is_structured(); }

  bool is_done() const { return next_ == source_->cend(); }
  const Json& next() const { return *next_; }

  void add(values::JsonValue item) {
    if (values::JsonObject* object = made.object()) {
      object->set(text(next_.key(), "the key"), std::move(item));
    } else {
      made.list()->push_back(std::move(item));
    }
    ++next_;
  }

  void append_to(Path& path) const {
    if (source_->is_object()) {
      path /= next_.key();
    } else {
      path /= static_cast<std::size_t>(next_ - source_->cbegin());
    }
  }

  static values::JsonValue scalar(const Json& json) {
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
        throw Refused{"binary data has no JSON form"};
      case Type::discarded:
        throw Refused{"a value that the parser discarded has no JSON form"};
      default:
        return nullptr;
    }
  }

 private:
  static values::Text text(const std::string& bytes, const std::string& what) {
    try {
      return values::Text(bytes);
    } catch (const values::InvalidUtf8& error) {
      throw Refused{what + " is no well-formed UTF-8 at byte " + std::to_string(error.byte_offset())};
    }
  }

  const Json* source_;
  typename Json::const_iterator next_;
};

// An open container of this library, likewise.
template <NlohmannJson Json>
class ToNlohmann {
 public:
  using Source = values::JsonValue;
  using Path = typename Json::json_pointer;

  Json made;

  // Reserves all room at once: a growing ordered_map would copy its items.
  explicit ToNlohmann(const values::JsonValue& source) : list_(source.list()), object_(source.object()) {
    if (list_ != nullptr) {
      made = Json::array();
      made.template get_ref<Array&>().reserve(list_->size());
    } else {
      made = Json::object();
      if constexpr (requires(Object object) { object.reserve(0); }) {
        made.template get_ref<Object&>().reserve(object_->size());
      }
    }
  }

  static bool is_container(const values::JsonValue& value) noexcept {
    return value.list() != nullptr || value.object() != nullptr;
  }

  bool is_done() const { return next_ == (list_ != nullptr ? list_->size() : object_->size()); }
  const values::JsonValue& next() const { return list_ != nullptr ? (*list_)[next_] : field().value; }

  // Keys are unique, so the lookup is skipped where it would be a search.
  void add(Json item) {
    if (list_ != nullptr) {
      made.template get_ref<Array&>().push_back(std::move(item));
    } else {
      Object& object = made.template get_ref<Object&>();
      std::string key(field().key.view());
      if constexpr (requires { object.emplace_back(std::move(key), std::move(item)); }) {
        object.emplace_back(std::move(key), std::move(item));
      } else {
        object.emplace(std::move(key), std::move(item));
      }
    }
    ++next_;
  }

  void append_to(Path& path) const {
    if (list_ != nullptr) {
      path /= next_;
    } else {
      path /= std::string(field().key.view());
    }
  }

  static Json scalar(const values::JsonValue& value) {
    if (const auto boolean = value.boolean()) return *boolean;
    if (const auto integer = value.integer()) {
      if (const auto number = integer->template to<std::int64_t>()) return *number;
      if (const auto number = integer->template to<std::uint64_t>()) return *number;
      throw Refused{"the integer " + integer->digits() + " does not fit in 64 bits"};
    }
    if (const auto floating = value.floating()) return *floating;
    if (const auto string = value.string()) return std::string(*string);
    if (const auto* foreign = value.foreign()) return std::string(foreign->text_form().view());
    return nullptr;
  }

 private:
  using Array = typename Json::array_t;
  using Object = typename Json::object_t;

  const values::JsonField& field() const { return object_->begin()[next_]; }

  const values::JsonList* list_;
  const values::JsonObject* object_;
  std::size_t next_ = 0;
};

// The converted `root`, which `whole` names in an error. Container is one of the two classes above.
template <typename Container>
auto converted(const typename Container::Source& root, const char* whole) {
  std::vector<Container> open;  // in place of recursion
  try {
    for (const auto* source = &root;; source = &open.back().next()) {
      if (Container::is_container(*source)) {
        open.emplace_back(*source);
      } else if (open.empty()) {
        return Container::scalar(*source);
      } else {
        open.back().add(Container::scalar(*source));
      }
      while (open.back().is_done()) {
        auto made = std::move(open.back().made);
        open.pop_back();
        if (open.empty()) return made;
        open.back().add(std::move(made));
      }
    }
  } catch (const Refused& refused) {
    typename Container::Path path;
    for (const Container& each : open) each.append_to(path);
    throw NotConvertible(whole, values::Text::lossy(path.to_string()), refused.why);
  }
}

inline values::JsonObject object_from(const nlohmann::ordered_json& json, const char* whole) {
  if (!json.is_object()) {
    throw NotConvertible(whole, "", std::string("must be an object, not of type ") + json.type_name());
  }
  values::JsonValue value = converted<FromNlohmann<nlohmann::ordered_json>>(json, whole);
  return std::move(*value.object());
}

}  // namespace detail

template <NlohmannJson Json>
values::JsonValue from_nlohmann(const Json& json) {
  return detail::converted<detail::FromNlohmann<Json>>(json, "the value");
}

template <NlohmannJson Json>
Json to_nlohmann(const values::JsonValue& value) {
  return detail::converted<detail::ToNlohmann<Json>>(value, "the value");
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
  return detail::converted<detail::ToNlohmann<nlohmann::ordered_json>>(finished, "the finished answer");
}

}  // namespace vantrex::adapters

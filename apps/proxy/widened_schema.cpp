#include "proxy/widened_schema.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <set>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "proxy/names.h"
#include "vantrex/tool_handlers/next_steps/finishing.h"

namespace next_steps_proxy {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// What a dropped null field may break, and what depends on that.
constexpr std::string_view kDropped[] = {"required",
                                         "minProperties",
                                         "dependentRequired",
                                         "dependentSchemas",
                                         "dependencies",
                                         "not",
                                         "if",
                                         "then",
                                         "else",
                                         "unevaluatedProperties",
                                         "unevaluatedItems",
                                         "uniqueItems",
                                         "maxContains"};
// What "next_steps" may break.
constexpr std::string_view kDroppedAtRoot[] = {
    "additionalProperties", "patternProperties", "propertyNames", "maxProperties", "enum", "const"};

// Keywords whose values are no schemas, and those whose values are objects of schemas.
constexpr std::string_view kNoSchemas[] = {"enum", "const", "default", "examples"};
constexpr std::string_view kNamedSchemas[] = {"properties", "patternProperties", "$defs", "definitions"};

bool is_one_of(std::string_view key, std::span<const std::string_view> keys) {
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

// A value in a schema.
struct Part {
  JsonValue* value;
  bool is_schema;  // or a list of schemas; otherwise an object of them
};

class Widening {
 public:
  explicit Widening(JsonObject schema) : root_(std::move(schema)) {}

  JsonObject result() && {
    relax_all();
    open_all();
    for (JsonValue* const schema : schemas_) {
      const auto reference = std::as_const(*schema)["$ref"].string();
      is_lost_ |= reference && target(*reference) == nullptr;
    }
    // The inner ones first: what is removed moves its neighbours.
    for (std::size_t i = schemas_.size(); i > 0; --i) {
      if (!opened_.contains(schemas_[i - 1])) continue;
      for (const std::string_view key : kDroppedAtRoot) schemas_[i - 1]->object()->remove(key);
    }
    if (is_lost_) root_ = JsonObject{{"type", "object"}};
    JsonObject& schema = *root_.object();
    if (schema["properties"].object() == nullptr) schema.set("properties", JsonObject());
    const JsonObject steps{{"description", "Calls that may be made next: a list of {tool, args, reason}"}};
    schema.find("properties")->object()->set("next_steps", steps);
    return std::move(schema);
  }

 private:
  // Relaxes every subschema, and lists them: the outer ones first.
  void relax_all() {
    std::vector<Part> waiting = {{&root_, true}};
    while (!waiting.empty()) {
      const Part part = waiting.back();
      waiting.pop_back();
      if (JsonList* const list = part.value->list()) {
        for (std::size_t i = 0; i < list->size(); ++i) waiting.push_back({list->item(i), part.is_schema});
      }
      JsonObject* const object = part.value->object();
      if (object == nullptr) continue;
      if (part.is_schema) relax(*part.value, *object);
      for (const values::JsonField& field : *object) {
        const std::string_view key = field.key.view();
        if (part.is_schema && is_one_of(key, kNoSchemas)) continue;
        waiting.push_back({object->find(key), !part.is_schema || !is_one_of(key, kNamedSchemas)});
      }
    }
  }

  // Relaxes a schema but not what is in it.
  void relax(JsonValue& value, JsonObject& schema) {
    is_lost_ |= schema.contains("$dynamicRef") || schema.contains("$recursiveRef") ||
                (schema.contains("$id") && &value != &root_);
    for (const std::string_view key : kDropped) schema.remove(key);
    for (const std::string_view key : {"enum", "const"}) {
      if (JsonValue* each = schema.find(key)) *each = module::without_null_fields(std::move(*each));
    }
    auto one_of = schema.remove("oneOf");  // several of the relaxed schemas may fit
    if (one_of && !schema.contains("anyOf")) schema.set("anyOf", *std::move(one_of));
    schemas_.push_back(&value);
  }

  // Finds the schemas that the answer itself must fit.
  void open_all() {
    std::vector<JsonValue*> waiting = {&root_};
    while (!waiting.empty()) {
      JsonValue* const value = waiting.back();
      waiting.pop_back();
      if (value == nullptr || value->object() == nullptr || !opened_.insert(value).second) continue;
      JsonObject& schema = *value->object();
      for (const std::string_view key : {"allOf", "anyOf"}) {
        JsonValue* const field = schema.find(key);
        JsonList* const list = field == nullptr ? nullptr : field->list();
        for (std::size_t i = 0; list != nullptr && i < list->size(); ++i) waiting.push_back(list->item(i));
      }
      if (const auto reference = schema["$ref"].string()) waiting.push_back(target(*reference));
      JsonValue* const properties = schema.find("properties");
      if (properties == nullptr || properties->object() == nullptr) continue;
      if (JsonValue* steps = properties->object()->find("next_steps"))
        replaced_.push_back(std::exchange(*steps, JsonObject()));
    }
  }

  // Where a reference leads; null if that goes, or is not found. Escapes are not known.
  JsonValue* target(std::string_view reference) {
    JsonValue* at = reference.starts_with('#') ? &root_ : nullptr;
    reference.remove_prefix(std::min<std::size_t>(reference.size(), 1));
    while (at != nullptr && !reference.empty()) {
      if (reference.front() != '/') return nullptr;
      const std::size_t end = std::min(reference.find('/', 1), reference.size());
      at = member(*at, reference.substr(1, end - 1));
      reference.remove_prefix(end);
    }
    return at;
  }

  JsonValue* member(JsonValue& value, std::string_view key) {
    if (JsonObject* const object = value.object()) {
      return opened_.contains(&value) && is_one_of(key, kDroppedAtRoot) ? nullptr : object->find(key);
    }
    JsonList* const list = value.list();
    std::size_t position = 0;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), position);
    const bool is_number = error == std::errc() && end == key.data() + key.size();
    return list != nullptr && is_number ? list->item(position) : nullptr;
  }

  JsonValue root_;
  std::vector<JsonValue*> schemas_;
  std::vector<JsonValue> replaced_;    // what "next_steps" was: schemas_ leads into it
  std::set<const JsonValue*> opened_;  // schemas that the answer itself must fit
  bool is_lost_ = false;               // a reference leads to what goes, or may do so
};

}  // namespace

JsonObject widened_schema(JsonObject schema) {
  return Widening(std::move(schema)).result();
}

}  // namespace next_steps_proxy

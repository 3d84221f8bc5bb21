#include "proxy/widened_schema.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
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

using Keywords = std::span<const std::string_view>;

// A null field that is dropped may break these, and so may the loss of another one of them.
constexpr std::array kDropped = std::to_array<std::string_view>(
    {"required", "minProperties", "dependentRequired", "dependentSchemas", "dependencies", "not", "if",
     "then", "else", "unevaluatedProperties", "unevaluatedItems", "uniqueItems", "maxContains"});
// At the root, "next_steps" may break these.
constexpr std::array kDroppedAtRoot = std::to_array<std::string_view>(
    {"additionalProperties", "patternProperties", "propertyNames", "maxProperties", "enum", "const"});
// Their values are no schemas.
constexpr std::array kValues = std::to_array<std::string_view>({"enum", "const", "default", "examples"});
// Their values are objects of schemas.
constexpr std::array kNames =
    std::to_array<std::string_view>({"properties", "patternProperties", "$defs", "definitions"});
// References that are not followed.
constexpr std::array kForeign = std::to_array<std::string_view>({"$dynamicRef", "$recursiveRef"});

constexpr std::size_t kMaxPlaces = 256;

bool holds(Keywords keywords, std::string_view key) {
  return std::find(keywords.begin(), keywords.end(), key) != keywords.end();
}

// The name in a part of a JSON pointer.
std::string unescaped(std::string_view part) {
  std::string name;
  for (std::size_t i = 0; i < part.size(); ++i) {
    const bool is_escape = part[i] == '~' && i + 1 < part.size();
    name += !is_escape ? part[i] : part[++i] == '1' ? '/' : '~';
  }
  return name;
}

JsonValue* child_of(JsonValue& parent, std::string_view part) {
  if (JsonObject* const object = parent.object()) return object->find_mutable(unescaped(part));
  JsonList* const list = parent.list();
  std::size_t position = 0;
  const auto read = std::from_chars(part.data(), part.data() + part.size(), position);
  if (list == nullptr || read.ec != std::errc() || position >= list->size()) return nullptr;
  return &list->mutable_item(position);
}

// The value at "#" or "#/a/b", or null.
JsonValue* at_pointer(JsonValue& root, std::string_view pointer) {
  JsonValue* at = &root;
  if (!pointer.starts_with('#')) return nullptr;
  pointer.remove_prefix(1);
  while (at != nullptr && !pointer.empty()) {
    if (pointer.front() != '/') return nullptr;
    const std::size_t end = std::min(pointer.find('/', 1), pointer.size());
    at = child_of(*at, pointer.substr(1, end - 1));
    pointer.remove_prefix(end);
  }
  return at;
}

// "oneOf" becomes "anyOf", as relaxed schemas may fit several times.
void relax_one_of(JsonObject& schema) {
  std::optional<JsonValue> one_of = schema.remove("oneOf");
  if (!one_of) return;
  if (!schema.contains("anyOf")) return schema.set("anyOf", *std::move(one_of));
  if (!schema.contains("allOf")) schema.set("allOf", JsonList());
  JsonList* const all_of = schema.find_mutable("allOf")->list();
  if (all_of != nullptr) all_of->push_back(JsonObject{{"anyOf", *std::move(one_of)}});
}

void relax(JsonObject& schema) {
  for (const std::string_view key : kDropped) schema.remove(key);
  relax_one_of(schema);
  for (const std::string_view key : {"enum", "const"}) {
    JsonValue* const value = schema.find_mutable(key);
    if (value != nullptr) *value = module::without_null_fields(std::move(*value));
  }
}

// Relaxes every subschema and returns the references; nothing if there are any that are no JSON pointers.
std::optional<std::vector<std::string>> relax_all(JsonValue& root) {
  std::vector<std::string> references;
  std::vector<std::pair<JsonValue*, bool>> waiting = {{&root, true}};  // with: whether it is a schema
  while (!waiting.empty()) {
    const auto [value, is_schema] = waiting.back();
    waiting.pop_back();
    JsonObject* const object = value->object();
    if (JsonList* const list = value->list()) {
      for (std::size_t i = 0; i < list->size(); ++i) waiting.push_back({&list->mutable_item(i), true});
    }
    if (object == nullptr) continue;
    if (is_schema) relax(*object);
    for (const values::JsonField& field : *object) {
      const std::string_view key = field.key.view();
      if (is_schema && (holds(kForeign, key) || (key == "$id" && value != &root))) return std::nullopt;
      if (is_schema && key == "$ref") references.emplace_back(field.value.string().value_or(""));
      if (!is_schema || !holds(kValues, key)) {
        waiting.push_back({object->find_mutable(key), !is_schema || !holds(kNames, key)});
      }
    }
  }
  return references;
}

// Allows "next_steps" at the root and wherever that leads. Returns false if there are too many places.
bool open_root(JsonValue& root) {
  std::vector<std::string> places = {"#"};
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (places.size() > kMaxPlaces) return false;
    const std::string place = places[i];
    JsonValue* const value = at_pointer(root, place);
    JsonObject* const schema = value == nullptr ? nullptr : value->object();
    if (schema == nullptr) continue;
    const auto lead_to = [&](std::string next) {
      if (std::find(places.begin(), places.end(), next) == places.end()) places.push_back(std::move(next));
    };
    for (const std::string_view key : kDroppedAtRoot) schema->remove(key);
    if (JsonValue* names = schema->find_mutable("properties"); names != nullptr && names->object() != nullptr)
      names->object()->remove("next_steps");
    if (const auto reference = std::as_const(*schema)["$ref"].string()) lead_to(std::string(*reference));
    for (const char* const key : {"allOf", "anyOf"}) {
      const JsonList* const list = std::as_const(*schema)[key].list();
      for (std::size_t item = 0; list != nullptr && item < list->size(); ++item) {
        lead_to(place + "/" + key + "/" + std::to_string(item));
      }
    }
  }
  return true;
}

// Returns false if the schema refers to what it has not.
bool widen(JsonValue& root) {
  const std::optional<std::vector<std::string>> references = relax_all(root);
  if (!references || !open_root(root)) return false;
  const auto leads = [&](const std::string& each) { return at_pointer(root, each) != nullptr; };
  return std::all_of(references->begin(), references->end(), leads);
}

void describe_next_steps(JsonObject& schema) {
  JsonValue* properties = schema.find_mutable("properties");
  if (properties == nullptr || properties->object() == nullptr) schema.set("properties", JsonObject());
  schema.find_mutable("properties")
      ->object()
      ->set("next_steps",
            JsonObject{{"description", "Calls that may be made next: a list of {tool, args, reason}"}});
}

}  // namespace

JsonObject widened_schema(JsonObject schema) {
  JsonValue root(std::move(schema));
  if (!widen(root)) root = JsonObject{{"type", "object"}};
  describe_next_steps(*root.object());
  return std::move(*root.object());
}

}  // namespace next_steps_proxy

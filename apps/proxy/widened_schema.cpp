#include "proxy/widened_schema.h"

#include <set>
#include <string>
#include <string_view>
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

template <typename... Keys>
bool is_one_of(std::string_view key, const Keys&... keys) {
  return ((key == keys) || ...);
}

JsonObject* object_at(JsonObject& parent, std::string_view key) {
  JsonValue* const value = parent.find(key);
  return value == nullptr ? nullptr : value->object();
}

// A value in a schema.
struct Part {
  JsonValue* value;
  std::string_view key;  // of the field that it is, or is in
  bool is_schema;        // or a list of schemas; otherwise an object of them
  bool is_root;          // whether the answer itself must fit it
};

class Widening {
 public:
  explicit Widening(JsonObject schema) : root_(std::move(schema)) {}

  JsonObject result() && {
    std::size_t known = 0;
    do {
      known = opened_.size();
      relax_parts();
    } while (opened_.size() != known);
    if (is_lost_) root_ = JsonObject{{"type", "object"}};
    JsonObject& schema = *root_.object();
    if (object_at(schema, "properties") == nullptr) schema.set("properties", JsonObject());
    const JsonObject steps{{"description", "Calls that may be made next: a list of {tool, args, reason}"}};
    object_at(schema, "properties")->set("next_steps", steps);
    return std::move(schema);
  }

 private:
  void relax_parts() {
    std::vector<Part> waiting = {{&root_, "", true, true}};
    while (!waiting.empty()) {
      const Part part = waiting.back();
      waiting.pop_back();
      if (JsonList* const list = part.value->list()) {
        for (std::size_t i = 0; i < list->size(); ++i) {
          waiting.push_back({list->item(i), part.key, part.is_schema, part.is_root});
        }
      }
      if (part.value->object() != nullptr) relax(part, *part.value->object(), waiting);
    }
  }

  // Relaxes a schema but not what is in it, which is to wait.
  void relax(const Part& part, JsonObject& object, std::vector<Part>& waiting) {
    const bool is_root = part.is_root || (part.is_schema && is_opened(part.key));
    if (part.is_schema) relax_keywords(object, is_root);
    for (const values::JsonField& field : object) {
      const std::string_view key = field.key.view();
      if (part.is_schema && is_one_of(key, "$ref", "$dynamicRef", "$recursiveRef"))
        follow(field.value, is_root);
      if (part.is_schema && is_one_of(key, "enum", "const", "default", "examples")) continue;
      const bool has_names = is_one_of(key, "properties", "patternProperties", "$defs", "definitions");
      waiting.push_back({object.find(key), key, !part.is_schema || !has_names,
                         part.is_schema && is_root && is_one_of(key, "allOf", "anyOf")});
    }
  }

  static void relax_keywords(JsonObject& schema, bool is_root) {
    for (const std::string_view key : kDropped) schema.remove(key);
    if (auto one_of = schema.remove("oneOf")) {  // several of the relaxed schemas may fit
      JsonList all_of;
      if (auto any_of = schema.remove("anyOf")) all_of.push_back(JsonObject{{"anyOf", *std::move(any_of)}});
      if (auto others = schema.remove("allOf")) all_of.push_back(JsonObject{{"allOf", *std::move(others)}});
      schema.set("anyOf", *std::move(one_of));
      if (!all_of.empty()) schema.set("allOf", std::move(all_of));
    }
    for (const std::string_view key : {"enum", "const"}) {
      if (JsonValue* value = schema.find(key)) *value = module::without_null_fields(std::move(*value));
    }
    if (!is_root) return;
    for (const std::string_view key : kDroppedAtRoot) schema.remove(key);
    if (JsonObject* const properties = object_at(schema, "properties")) properties->remove("next_steps");
  }

  // Notes where a reference leads.
  void follow(const JsonValue& reference, bool is_root) {
    const std::string pointer = std::string(reference.string().value_or("")) + "/";
    const auto passes = [&](std::string_view key) {
      return pointer.find("/" + std::string(key) + "/") != std::string::npos;
    };
    for (const std::string_view key : kDropped) is_lost_ |= passes(key);
    is_lost_ |=
        passes("oneOf") || pointer.starts_with("#/additionalProp") || pointer.starts_with("#/patternProp");
    if (!is_root || pointer == "#/") return;
    const std::size_t name = pointer.rfind('/', pointer.size() - 2) + 1;
    const bool is_name = pointer.starts_with("#/") && pointer.find_first_of("~%") == std::string::npos &&
                         pointer.find_first_not_of("0123456789/", name) != std::string::npos;
    opened_.insert(is_name && opened_.size() < kMaxOpened ? pointer.substr(name, pointer.size() - name - 1)
                                                          : "");
  }

  // Whether a reference from the root leads to the schema under this key, or may do so.
  bool is_opened(std::string_view key) const { return opened_.contains("") || opened_.contains(key); }

  static constexpr std::size_t kMaxOpened = 16;

  JsonValue root_;
  std::set<std::string, std::less<>> opened_;  // "" for everything
  bool is_lost_ = false;                       // a reference may lead to what is dropped
};

}  // namespace

JsonObject widened_schema(JsonObject schema) {
  return Widening(std::move(schema)).result();
}

}  // namespace next_steps_proxy

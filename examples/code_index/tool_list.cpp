#include "tool_list.h"

#include <algorithm>
#include <string>
#include <utility>

#include "embedded_json.h"
#include "requests/json_reader.h"
#include "vantrex/values/text_forms.h"

namespace code_index {

using vantrex::tool_handlers::next_steps::ServedTools;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

// Adds to each tool what all have in common, above all the definitions of what finishing adds.
JsonList read_tool_list() {
  const JsonObject library = next_steps_requests::read_json_object(kFinishedAnswerSchema, "the schema");
  JsonValue read = next_steps_requests::read_json(kToolsJson);
  JsonList tools = std::move(*read.list());
  for (std::size_t i = 0; i < tools.size(); ++i) {
    JsonObject& tool = *tools.item(i)->object();
    tool.find("outputSchema")->object()->set("$defs", library["$defs"]);
    tool.set("annotations",
             JsonObject{{"readOnlyHint", true}, {"idempotentHint", true}, {"openWorldHint", false}});
  }
  return tools;
}

const JsonObject& properties_of(const JsonObject& tool) {
  return *tool["inputSchema"]["properties"].object();
}

// An argument is a string: one of a few, or any that is not empty.
bool fits(const JsonValue& argument, const JsonObject& schema) {
  if (const JsonList* choices = schema["enum"].list()) {
    return std::find(choices->begin(), choices->end(), argument) != choices->end();
  }
  return argument.string() && !argument.is_empty();
}

// Adds the actions that the tool's schema allows, or the tool itself when it has none.
void add_served(ServedTools& served, const JsonObject& tool) {
  const std::string name(*tool["name"].string());
  const JsonList* actions = properties_of(tool)["action"]["enum"].list();
  if (actions == nullptr) return served.add({name});
  for (const JsonValue& action : *actions) served.add({name, action.string()});
}

[[noreturn]] void refuse(std::string_view key, const std::string& why, const JsonObject& tool) {
  throw WrongArguments("The argument " + compact_text(JsonValue(key)) + " " + why +
                       ". The arguments must fit " + compact_text(tool["inputSchema"]));
}

}  // namespace

const JsonList& tool_list() {
  static const JsonList tools = read_tool_list();
  return tools;
}

const JsonObject* find_tool(std::string_view name) {
  for (const JsonValue& each : tool_list()) {
    if (each["name"].string() == name) return each.object();
  }
  return nullptr;
}

void check_arguments(const JsonObject& tool, const JsonObject& arguments) {
  const JsonObject& properties = properties_of(tool);
  for (const auto& [key, argument] : arguments) {
    if (!properties.contains(key.view())) refuse(key.view(), "is unknown", tool);
  }
  for (const auto& [key, schema] : properties) {  // all are required
    if (!arguments.contains(key.view())) refuse(key.view(), "is missing", tool);
    if (!fits(arguments[key.view()], *schema.object())) refuse(key.view(), "has a wrong value", tool);
  }
}

const ServedTools& served_tools() {
  static const ServedTools served = [] {
    ServedTools tools;
    for (const JsonValue& tool : tool_list()) add_served(tools, *tool.object());
    return tools;
  }();
  return served;
}

}  // namespace code_index

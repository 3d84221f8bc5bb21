// The tools as clients see them: names, descriptions and schemas, from tools.json.
#pragma once

#include <stdexcept>
#include <string_view>

#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/values/json_value.h"

namespace code_index {

// Arguments that do not fit the tool's schema. The message says what to change.
class WrongArguments : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The descriptions of all tools, always in the same order.
const vantrex::values::JsonList& tool_list();

// The description of the tool `name`, or null.
const vantrex::values::JsonObject* find_tool(std::string_view name);

// Throws WrongArguments unless the arguments are those that `tool` takes.
void check_arguments(const vantrex::values::JsonObject& tool, const vantrex::values::JsonObject& arguments);

// The tools and actions in the list, so that answers offer steps to these alone.
const vantrex::tool_handlers::next_steps::ServedTools& served_tools();

}  // namespace code_index

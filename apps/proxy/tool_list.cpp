#include "proxy/tool_list.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "proxy/json_spans.h"
#include "proxy/widened_schema.h"
#include "requests/json_reader.h"
#include "vantrex/tool_handlers/next_steps/tables.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_proxy {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// Adds the tool, or each of the actions that its schema lists.
void add(const JsonValue& tool, std::vector<module::ServedTool>& tools) {
  const std::string name(tool["name"].string().value_or(""));
  const JsonList* const actions = tool["inputSchema"]["properties"]["action"]["enum"].list();
  if (actions == nullptr) return tools.push_back({name});
  for (const JsonValue& action : *actions) {
    if (action.string()) tools.push_back({name, *action.string()});
  }
}

}  // namespace

bool ToolList::touches(std::string_view tool) const {
  const module::Tables& tables = module::tables_of(options_.catalogue);
  const auto is_of_tool = [tool](const auto& row) { return module::split_key(row.key).tool == tool; };
  const auto is_signal = [&](const module::SignalRow& row) {
    return row.signal != nullptr && is_of_tool(row);
  };
  return options_.compact || std::any_of(tables.usual.begin(), tables.usual.end(), is_of_tool) ||
         std::any_of(tables.signals.begin(), tables.signals.end(), is_signal);
}

std::optional<std::string> ToolList::add_page(std::string_view line, std::string_view cursor) {
  const JsonValue message = requests::read_json(line);
  const JsonList* const tools = message["result"]["tools"].list();
  if (tools == nullptr) return std::nullopt;
  const auto [page] = members_of(members_of(line, {"result"})[0], {"tools"});
  std::vector<module::ServedTool> listed;
  std::vector<NewValue> changes;
  visit_items(page, [&, position = std::size_t{0}](std::string_view span) mutable {
    const JsonValue& tool = (*tools)[position++];
    add(tool, listed);
    const JsonObject* const schema = tool["outputSchema"].object();
    if (schema == nullptr || !touches(tool["name"].string().value_or(""))) return;
    changes.push_back({members_of(span, {"outputSchema"})[0], values::compact_text(widened_schema(*schema))});
  });
  if (cursor.empty()) pages_.clear();
  if (cursor.empty() || cursor == next_page_) {
    pages_.insert(pages_.end(), listed.begin(), listed.end());
    next_page_ = message["result"]["nextCursor"].string().value_or("");
    if (next_page_.empty()) listed_ = module::ServedTools(std::exchange(pages_, {}));
  }
  return changes.empty() ? std::nullopt : std::optional(spliced(line, std::move(changes)));
}

}  // namespace next_steps_proxy

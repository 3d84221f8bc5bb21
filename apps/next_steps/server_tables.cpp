#include "next_steps/server_tables.h"

#include <algorithm>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/assembly.h"

namespace next_steps_program {

namespace {

// Returns the answers that a server with `tools` gives. A tool with all its actions gives one
// answer for each of its actions that has a row, and one for all other actions.
std::vector<AnswerOf> answers_of(const module::Tables& tables, const std::vector<module::ServedTool>& tools) {
  std::set<std::string_view> keys;
  for (const module::UsualRow& row : tables.usual) keys.insert(row.key);
  for (const module::SignalRow& row : tables.signals) keys.insert(row.key);
  std::vector<AnswerOf> answers;
  for (const module::ServedTool& each : tools) {
    const std::optional<std::string_view> action = each.action;
    answers.push_back({each.tool, action ? std::optional<std::string>(*action) : std::nullopt});
    if (action) continue;
    for (const std::string_view key : keys) {
      const auto [tool, key_action] = module::split_key(key);
      if (tool == each.tool && key_action) answers.push_back({each.tool, std::string(*key_action)});
    }
  }
  return answers;
}

bool contains(const std::vector<AnswerOf>& answers, const AnswerOf& wanted) {
  return std::find(answers.begin(), answers.end(), wanted) != answers.end();
}

}  // namespace

ServerTables::ServerTables(const ServerOptions& server, const module::Tables& tables)
    : tables_(tables), serves_(server.serves()), answers_(answers_of(tables, server.tools())) {
  for (const AnswerOf& each : answers_) {
    used_rows_.insert(tables.usual_row(each.tool, each.action));
    used_signals_.insert(tables.signal_row(each.tool, each.action));
  }
}

std::vector<const module::UsualRow*> ServerTables::rows() const {
  std::vector<const module::UsualRow*> rows;
  for (const module::UsualRow& row : tables_.usual) {
    if (serves_ == nullptr || used_rows_.contains(&row)) rows.push_back(&row);
  }
  return rows;
}

std::vector<const module::Call*> ServerTables::calls(const module::UsualRow& row) const {
  std::vector<const module::Call*> calls;
  for (const module::Call& call : row.calls) {
    if (module::is_served(call.tool.view(), action_of(call), serves_)) calls.push_back(&call);
  }
  return calls;
}

std::vector<const module::SignalRow*> ServerTables::signals() const {
  std::vector<const module::SignalRow*> signals;
  for (const module::SignalRow& row : tables_.signals) {
    if ((serves_ == nullptr || used_signals_.contains(&row)) && is_served(row)) signals.push_back(&row);
  }
  return signals;
}

std::vector<AnswerOf> ServerTables::dead_ends() const {
  std::vector<AnswerOf> dead_ends;
  for (const AnswerOf& each : answers_) {
    if (!leads_on(each) && !contains(dead_ends, each)) dead_ends.push_back(each);
  }
  return dead_ends;
}

bool ServerTables::leads_on(const AnswerOf& answer) const {
  const module::UsualRow* usual = tables_.usual_row(answer.tool, answer.action);
  if (usual != nullptr && !calls(*usual).empty()) return true;
  const module::SignalRow* signal = tables_.signal_row(answer.tool, answer.action);
  return signal != nullptr && is_served(*signal);
}

bool ServerTables::is_served(const module::SignalRow& row) const {
  return row.signal != nullptr &&
         module::is_served(row.signal->call.tool.view(), action_of(row.signal->call), serves_);
}

}  // namespace next_steps_program

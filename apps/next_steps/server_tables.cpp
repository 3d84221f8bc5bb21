#include "next_steps/server_tables.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/assembly.h"

namespace next_steps_program {

using module::RowKey;

ServerTables::ServerTables(const module::ServedTools* serves, const module::Tables& tables)
    : tables_(tables), serves_(serves) {
  if (serves == nullptr) return;
  for (const module::ServedTool& each : serves->entries()) answers_.insert({each.tool, each.action});
  const auto add_action = [this](std::string_view key) {
    const RowKey answer = module::split_key(key);
    if (answers_.contains({answer.tool, std::nullopt})) answers_.insert(answer);
  };
  for (const module::UsualRow& row : tables.usual) add_action(row.key);
  for (const module::SignalRow& row : tables.signals) add_action(row.key);
  for (const RowKey& answer : answers_) {
    used_rows_.insert(tables.usual_row(answer.tool, answer.action));
    used_rows_.insert(tables.signal_row(answer.tool, answer.action));
  }
}

std::vector<const module::UsualRow*> ServerTables::rows() const {
  std::vector<const module::UsualRow*> rows;
  for (const module::UsualRow& row : tables_.usual) {
    if (is_used(&row)) rows.push_back(&row);
  }
  return rows;
}

std::vector<const module::Call*> ServerTables::calls(const module::UsualRow& row) const {
  std::vector<const module::Call*> calls;
  for (const module::Call& call : row.calls) {
    if (is_served(call)) calls.push_back(&call);
  }
  return calls;
}

std::vector<const module::SignalRow*> ServerTables::signals() const {
  std::vector<const module::SignalRow*> signals;
  for (const module::SignalRow& row : tables_.signals) {
    if (is_used(&row) && is_served(row)) signals.push_back(&row);
  }
  return signals;
}

std::vector<RowKey> ServerTables::dead_ends() const {
  std::vector<RowKey> dead_ends;
  std::copy_if(answers_.begin(), answers_.end(), std::back_inserter(dead_ends),
               [this](const RowKey& answer) { return !leads_on(answer); });
  return dead_ends;
}

bool ServerTables::leads_on(const RowKey& answer) const {
  const module::UsualRow* usual = tables_.usual_row(answer.tool, answer.action);
  if (usual != nullptr && !calls(*usual).empty()) return true;
  const module::SignalRow* signal = tables_.signal_row(answer.tool, answer.action);
  return signal != nullptr && is_served(*signal);
}

bool ServerTables::is_served(const module::Call& call) const {
  return module::is_served(call.tool.view(), action_of(call), serves_);
}
bool ServerTables::is_served(const module::SignalRow& row) const {
  return row.signal != nullptr && is_served(row.signal->call);
}

}  // namespace next_steps_program

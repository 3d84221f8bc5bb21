// The tables of steps as one server sees them.
//
// Threads: like an int. Everything throws only std::bad_alloc.
#pragma once

#include <set>
#include <vector>

#include "next_steps/names.h"
#include "vantrex/tool_handlers/next_steps/rules.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace next_steps_program {

// The rows for the answers that the server gives, and the steps that the server has; all of them if `serves`
// is null.
class ServerTables {
 public:
  // `serves` and `tables` must outlive this object.
  ServerTables(const module::ServedTools* serves, const module::Tables& tables);

  // The rows in the order of the tables, and the calls of a row.
  std::vector<const module::UsualRow*> rows() const;
  std::vector<const module::Call*> calls(const module::UsualRow& row) const;
  std::vector<const module::SignalRow*> signals() const;

  // The answers of the server that never get a step from the tables. One without an action stands for the
  // actions of its tool that have no row.
  std::vector<module::RowKey> dead_ends() const;

  // Whether an answer of the tool and action may get a step from the tables.
  bool leads_on(const module::RowKey& answer) const;

 private:
  // Whether one of the server's answers has the row.
  bool is_used(const void* row) const { return serves_ == nullptr || used_rows_.contains(row); }
  bool is_served(const module::Call& call) const;
  bool is_served(const module::SignalRow& row) const;

  const module::Tables& tables_;
  const module::ServedTools* serves_;
  std::set<module::RowKey> answers_;  // that the server gives; none without `serves`
  std::set<const void*> used_rows_;   // of both tables
};

}  // namespace next_steps_program

#include "vantrex/tool_handlers/next_steps/explanation_remarks.h"

#include <algorithm>
#include <set>

#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/signal_trial.h"
#include "vantrex/workers/unknown_name.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

// Why an entry of the tool's own list is no step; empty if it is one.
std::string lack_of_step(const JsonValue& entry) {
  const JsonObject* step = entry.object();
  if (step == nullptr) return "is no object";
  if ((*step)["tool"].kind() != Kind::string) return "has no \"tool\" that is a string";
  if ((*step)["args"].kind() != Kind::object) return "has no \"args\" that is an object";
  if ((*step)["reason"].kind() != Kind::string) return "has no \"reason\" that is a string";
  return "";
}

// The tools of all rows and of all steps in the tables.
std::set<std::string> table_tools() {
  std::set<std::string> tools;
  const auto add_tool_of = [&](std::string_view key) { tools.emplace(key.substr(0, key.find(':'))); };
  for (const FollowUps& row : NEXT_STEPS) {
    add_tool_of(row.key);
    for (const Hint* hint : row.hints()) tools.emplace(hint->tool.view());
  }
  for (const SignalRow& row : _SIGNALS) {
    add_tool_of(row.key);
    const JsonObject step = SignalTrial(row).step();
    tools.emplace(step["tool"].string().value_or(""));
  }
  return tools;
}

bool is_known(std::string_view tool, const std::set<std::string>& table_tools, const ServedTools* serves) {
  if (serves != nullptr && serves->contains_any_of(tool)) return true;
  return table_tools.contains(std::string(tool)) || NEXT_STEPS.find(tool) != nullptr;
}

std::string unknown_tool(std::string_view tool, const std::set<std::string>& tools) {
  const std::vector<std::string_view> known(tools.begin(), tools.end());
  return workers::unknown_name("tool", tool, known);
}

bool takes_from_hits(const AbsentHint& absent) {
  const auto takes = absent.hint->takes;
  return takes == Takes::fqn || takes == Takes::path || takes == Takes::component;
}

}  // namespace

std::vector<std::string> remarks_on_own_steps(const JsonValue& own) {
  std::vector<std::string> remarks;
  if (own.is_null()) return remarks;
  if (own.list() == nullptr) return {"\"next_steps\" is ignored: it is no list"};
  for (std::size_t position = 0; position < own.list()->size(); ++position) {
    const std::string lack = lack_of_step((*own.list())[position]);
    if (lack.empty()) continue;
    remarks.push_back("next_steps[" + std::to_string(position) + "] is sent as it is, but is no step: it " +
                      lack);
  }
  return remarks;
}

std::vector<std::string> remarks_on_tables(const AnswerView& answer, std::string_view tool,
                                           const ServedTools* serves, const std::vector<AbsentHint>& absent) {
  std::vector<std::string> remarks;
  const std::set<std::string> tools = table_tools();
  if (!is_known(tool, tools, serves)) remarks.push_back(unknown_tool(tool, tools));
  const auto& lists = answer.hit_lists();
  const bool has_list = std::any_of(lists.begin(), lists.end(), [](const auto* list) { return list; });
  const bool wants_hits = std::any_of(absent.begin(), absent.end(), takes_from_hits);
  if (wants_hits && !has_list && !answer.has_no_hits()) {
    remarks.push_back("no hits: the answer has no list with one of the names " + workers::listed(_HIT_LISTS));
  }
  return remarks;
}

}  // namespace vantrex::tool_handlers::next_steps

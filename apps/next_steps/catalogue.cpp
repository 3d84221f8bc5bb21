// next-steps catalogue: the tables that are compiled in, in Markdown.
#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "next_steps/command.h"
#include "next_steps/output.h"
#include "next_steps/serves_option.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/signal_trial.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_program {

namespace module = vantrex::tool_handlers::next_steps;
using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

using Cells = std::vector<std::string>;

std::string table_row(const Cells& cells) {
  std::string row = "|";
  for (const std::string& cell : cells) row += ' ' + cell + " |";
  return row + '\n';
}

std::string table_head(const Cells& cells) {
  return table_row(cells) + table_row(Cells(cells.size(), "---"));
}

std::string code(std::string_view text) {
  return '`' + std::string(text) + '`';
}

// `symbol` `detail`, or the tool alone.
std::string call_cell(std::string_view tool, std::optional<std::string_view> action) {
  return action ? code(tool) + ' ' + code(*action) : code(tool);
}

// "0 hits and `query`": what a signal wants of an answer.
std::string wants_cell(const module::SignalTrial& trial) {
  std::string text = std::to_string(trial.hits()) + (trial.takes_more_hits() ? " or more hits" : " hits");
  for (const std::string_view field : trial.fields()) text += " and " + code(field);
  return text;
}

// An answer that the server gives: of one action, or of the tool with any action that has
// no rows of its own.
struct AnswerOf {
  std::string tool;
  std::optional<std::string> action;
};

// The answers that a server of `tools` gives.
std::vector<AnswerOf> answers_of(const std::vector<module::ServedTool>& tools) {
  std::set<std::string_view> keys;
  for (const module::FollowUps& row : module::NEXT_STEPS) keys.insert(row.key);
  for (const module::SignalRow& row : module::_SIGNALS) keys.insert(row.key);
  std::vector<AnswerOf> answers;
  for (const module::ServedTool& each : tools) {
    const std::optional<std::string_view> action = each.action;
    answers.push_back({each.tool, action ? std::optional<std::string>(*action) : std::nullopt});
    if (action) continue;
    const std::string prefix = each.tool + ':';
    for (const std::string_view key : keys) {
      if (key.starts_with(prefix)) answers.push_back({each.tool, std::string(key.substr(prefix.size()))});
    }
  }
  return answers;
}

// The tables as a server sees them: the rows for the answers that it gives, with the
// steps that it has. Without --serves they are whole.
class ServerTables {
 public:
  explicit ServerTables(const ServesOption& serves)
      : serves_(serves.set()), answers_(answers_of(serves.tools())) {
    for (const AnswerOf& each : answers_) {
      used_.insert(module::usual_row(each.tool, each.action));
      used_.insert(module::signal_row(each.tool, each.action));
    }
  }

  std::string follow_ups() const {
    std::string text = table_head({"Answer of", "Follow-up", "Takes", "Reason"});
    for (const module::FollowUps& row : module::NEXT_STEPS) {
      if (is_used(&row)) text += follow_ups_of(row);
    }
    return text;
  }

  std::string signals() const {
    std::string text = table_head({"Answer of", "Fires at", "Step", "Arguments", "Reason"});
    for (const module::SignalRow& row : module::_SIGNALS) {
      if (!is_used(&row) || !has_step(&row)) continue;
      const module::SignalTrial trial(row);
      const JsonObject step = trial.step();
      text +=
          table_row({code(row.key), wants_cell(trial), code(step["tool"].string().value_or("")),
                     code(compact_text(step["args"])), std::string(step["reason"].string().value_or(""))});
    }
    return text;
  }

  // A list of the answers that never get a step from the tables.
  std::string dead_ends() const {
    std::string text;
    for (const AnswerOf& each : answers_) {
      const bool leads_on = has_step(module::usual_row(each.tool, each.action)) ||
                            has_step(module::signal_row(each.tool, each.action));
      if (!leads_on) text += "- " + call_cell(each.tool, each.action) + '\n';
    }
    return text.empty() ? "None.\n" : text;
  }

 private:
  bool is_used(const void* row) const { return serves_ == nullptr || used_.contains(row); }

  bool has_hint(const module::Hint& hint) const {
    return module::is_served(hint.tool.view(), hint.action, serves_);
  }
  bool has_step(const module::FollowUps* row) const {
    return row != nullptr && std::any_of(row->hints().begin(), row->hints().end(),
                                         [this](const module::Hint* hint) { return has_hint(*hint); });
  }
  bool has_step(const module::SignalRow* row) const {
    return row != nullptr && module::is_served(module::SignalTrial(*row).step(), serves_);
  }

  std::string follow_ups_of(const module::FollowUps& row) const {
    if (!has_step(&row)) return table_row({code(row.key), "none", "", ""});
    std::string text;
    std::string key = code(row.key);
    for (const module::Hint* hint : row.hints()) {
      if (!has_hint(*hint)) continue;
      text += table_row({key, call_cell(hint->tool.view(), hint->action),
                         hint->takes ? code(module::text(*hint->takes).view()) : "nothing",
                         std::string(hint->reason.view())});
      key.clear();
    }
    return text;
  }

  const module::ServedTools* serves_;
  std::vector<AnswerOf> answers_;
  std::set<const void*> used_;  // rows of both tables
};

std::string limits() {
  const auto row = [](std::string_view name, const JsonValue& value, std::string_view meaning) {
    return table_row({code(name), compact_text(value), std::string(meaning)});
  };
  JsonList keys;
  for (const std::string_view key : module::HINT_KEYS) keys.push_back(key);
  return table_head({"Limit", "Value", "What it bounds"}) +
         row("MAX_STEPS", module::MAX_STEPS, "steps from signals and usual follow-ups together") +
         row("HINT_SHARE", module::HINT_SHARE, "share of an answer's bytes that its hints may take") +
         row("HINT_FLOOR_BYTES", module::HINT_FLOOR_BYTES, "bytes that hints may take in any answer") +
         row("HINT_KEYS", keys, "the fields that are hints, at any depth") +
         row("FAN_IN_FOR_IMPACT", module::FAN_IN_FOR_IMPACT,
             "callers or references from which on the blast radius is a step") +
         row("MAX_STEP_FILES", module::MAX_STEP_FILES, "files that a step to recommended tests lists");
}

ExitStatus catalogue(const ServesOption& serves) {
  const ServerTables tables(serves);
  Output output;
  output.write("## Usual follow-ups\n\n" + tables.follow_ups() +
               "\n## Signals\n\nCapitals stand for what is taken from the request or the answer.\n\n" +
               tables.signals());
  if (serves.set() != nullptr) output.write("\n## Without a follow-up\n\n" + tables.dead_ends());
  output.write("\n## Limits\n\n" + limits());
  output.flush();
  return ExitStatus::done;
}

}  // namespace

Command add_catalogue(CLI::App& program) {
  auto serves = std::make_shared<ServesOption>();
  CLI::App* parser = program.add_subcommand("catalogue", "Print the tables of steps as Markdown");
  serves->add_to(*parser);
  parser->footer(
      "With --serves the tables are as that server sees them, with a list of the answers\n"
      "that never get a step from them.");
  return {parser, [serves] { return catalogue(*serves); }};
}

}  // namespace next_steps_program

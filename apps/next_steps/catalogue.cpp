// next-steps catalogue: the tables that are compiled in, in Markdown.
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "next_steps/command.h"
#include "next_steps/output.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/signals.h"
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

std::string follow_ups() {
  std::string text = table_head({"Answer of", "Follow-up", "Takes", "Reason"});
  for (const module::FollowUps& row : module::NEXT_STEPS) {
    if (row.hints().empty()) text += table_row({code(row.key), "none", "", ""});
    std::string key = code(row.key);
    for (const module::Hint* hint : row.hints()) {
      const auto action = hint->action ? std::optional(hint->action->view()) : std::nullopt;
      text += table_row({key, call_cell(hint->tool.view(), action),
                         hint->takes ? code(module::text(*hint->takes).view()) : "nothing",
                         std::string(hint->reason.view())});
      key.clear();
    }
  }
  return text;
}

// A signal tried on made-up answers, to tell when it fires.
class SignalTrial {
 public:
  explicit SignalTrial(const module::SignalRow& row) : row_(row) {
    known_ = JsonObject{{"hits", nullptr},
                        {"query", "QUERY"},
                        {"fqn", "FQN"},
                        {"path", "PATH"},
                        {"what", row.key.substr(row.key.find(':') + 1)}};
    while (!fires(first_) && first_ < kMostHits) ++first_;
    known_.set("hits", first_);
  }

  JsonObject step() const { return row_.signal(known_).value_or(JsonObject()); }

  // "0 hits and `query`": what it takes to fire.
  std::string when() {
    std::string text = std::to_string(first_) + (fires(first_ + 1) ? " or more hits" : " hits");
    for (const std::string_view field : {"query", "fqn", "path"}) {
      JsonObject less = known_;
      less.set(field, nullptr);
      if (!row_.signal(less)) text += " and " + code(field);
    }
    return text;
  }

 private:
  static constexpr int kMostHits = 1000;

  bool fires(int hits) const {
    JsonObject known = known_;
    known.set("hits", hits);
    return row_.signal(known).has_value();
  }

  const module::SignalRow& row_;
  JsonObject known_;
  int first_ = 0;
};

std::string signals() {
  std::string text = table_head({"Answer of", "Fires at", "Step", "Arguments", "Reason"});
  for (const module::SignalRow& row : module::_SIGNALS) {
    SignalTrial trial(row);
    const JsonObject step = trial.step();
    text += table_row({code(row.key), trial.when(), code(step["tool"].string().value_or("")),
                       code(compact_text(step["args"])), std::string(step["reason"].string().value_or(""))});
  }
  return text;
}

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

ExitStatus catalogue() {
  Output output;
  output.write("## Usual follow-ups\n\n" + follow_ups() +
               "\n## Signals\n\nCapitals stand for what is taken from the request or the answer.\n\n" +
               signals() + "\n## Limits\n\n" + limits());
  output.flush();
  return ExitStatus::done;
}

}  // namespace

Command add_catalogue(CLI::App& program) {
  CLI::App* parser = program.add_subcommand("catalogue", "Print the tables of steps as Markdown");
  return {parser, catalogue};
}

}  // namespace next_steps_program

// next-steps catalogue: prints the tables of steps, as Markdown or as a picture.
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "next_steps/catalogue_graph.h"
#include "next_steps/command.h"
#include "next_steps/output.h"
#include "next_steps/server_tables.h"
#include "next_steps/serves_option.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/signal_trial.h"
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

// Returns "`symbol` `detail`", or the tool alone.
std::string call_cell(std::string_view tool, std::optional<std::string_view> action) {
  return action ? code(tool) + ' ' + code(*action) : code(tool);
}

// Returns what a signal needs: "0 hits and `query`".
std::string wants_cell(const module::SignalTrial& trial) {
  std::string text = std::to_string(trial.hits()) + (trial.takes_more_hits() ? " or more hits" : " hits");
  for (const std::string_view field : trial.fields()) text += " and " + code(field);
  return text;
}

std::string follow_ups(const ServerTables& tables) {
  std::string text = table_head({"Answer of", "Follow-up", "Takes", "Reason"});
  for (const module::FollowUps* row : tables.rows()) {
    const auto hints = tables.hints(*row);
    if (hints.empty()) text += table_row({code(row->key), "none", "", ""});
    std::string key = code(row->key);
    for (const module::Hint* hint : hints) {
      text += table_row({key, call_cell(hint->tool.view(), hint->action),
                         hint->takes ? code(module::text(*hint->takes).view()) : "nothing",
                         std::string(hint->reason.view())});
      key.clear();
    }
  }
  return text;
}

std::string signals(const ServerTables& tables) {
  std::string text = table_head({"Answer of", "Fires at", "Step", "Arguments", "Reason"});
  for (const module::SignalRow* row : tables.signals()) {
    const module::SignalTrial trial(*row);
    const JsonObject step = trial.step();
    text += table_row({code(row->key), wants_cell(trial), code(step["tool"].string().value_or("")),
                       code(compact_text(step["args"])), std::string(step["reason"].string().value_or(""))});
  }
  return text;
}

std::string dead_ends(const ServerTables& tables) {
  std::string text;
  for (const AnswerOf& each : tables.dead_ends()) text += "- " + call_cell(each.tool, each.action) + '\n';
  return text.empty() ? "None.\n" : text;
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
             "minimum number of callers or references for a blast-radius step") +
         row("MAX_STEP_FILES", module::MAX_STEP_FILES, "files that a step to recommended tests lists");
}

struct CatalogueOptions {
  ServesOption serves;
  bool graph = false;
};

ExitStatus catalogue(const CatalogueOptions& options) {
  const ServerTables tables(options.serves);
  Output output;
  if (options.graph) {
    output.write(catalogue_graph(tables));
    output.flush();
    return ExitStatus::done;
  }
  output.write("## Usual follow-ups\n\n" + follow_ups(tables) +
               "\n## Signals\n\nCapitals stand for what is taken from the request or the answer.\n\n" +
               signals(tables));
  if (options.serves.set() != nullptr) output.write("\n## Without a follow-up\n\n" + dead_ends(tables));
  output.write("\n## Limits\n\n" + limits());
  output.flush();
  return ExitStatus::done;
}

}  // namespace

Command add_catalogue(CLI::App& program) {
  auto options = std::make_shared<CatalogueOptions>();
  CLI::App* parser = program.add_subcommand("catalogue", "Print the tables of steps as Markdown");
  options->serves.add_to(*parser);
  parser->add_flag("--graph", options->graph, "Print them as an SVG picture instead");
  parser->footer(
      "With --serves, prints only the answers that the server gives and the steps that it has,\n"
      "and lists the answers that never get a step.");
  return {parser, [options] { return catalogue(*options); }};
}

}  // namespace next_steps_program

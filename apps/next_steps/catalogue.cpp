// next-steps catalogue: prints the tables of steps, as Markdown or as a picture.
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "next_steps/command.h"
#include "next_steps/options.h"
#include "next_steps/print_answer.h"
#include "next_steps/server_tables.h"
#include "requests/output.h"
#include "vantrex/logging/quoted_literal.h"
#include "vantrex/tool_handlers/next_steps.h"
#include "vantrex/tool_handlers/next_steps/tables.h"
#include "vantrex/values/text_forms.h"

namespace next_steps_program {

using vantrex::values::JsonList;
using vantrex::values::JsonObject;
using vantrex::values::JsonValue;

namespace {

using Cells = std::vector<std::string>;

// Returns `cell` on one line, with escaped "|".
std::string cell_text(const std::string& cell) {
  std::string text;
  for (const char byte : vantrex::logging::printable(cell))
    text += byte == '|' ? "\\|" : std::string(1, byte);
  return text;
}

std::string table_row(const Cells& cells) {
  std::string row = "|";
  for (const std::string& cell : cells) row += ' ' + cell_text(cell) + " |";
  return row + '\n';
}

std::string table_head(const Cells& cells) {
  return table_row(cells) + table_row(Cells(cells.size(), "---"));
}

std::string code(std::string_view text) {
  return '`' + std::string(text) + '`';
}

// Returns "`symbol` `detail`", or the tool alone.
std::string tool_cell(std::string_view tool, std::optional<std::string_view> action) {
  return action ? code(tool) + ' ' + code(*action) : code(tool);
}

// Returns the same for a call, and its other constant arguments.
std::string call_cell(const module::Call& call) {
  JsonObject args = constant_arguments(call);
  const auto action = action_of(call);
  std::string cell = tool_cell(call.tool.view(), action);
  if (action) args.remove("action");
  return args.empty() ? cell : cell + ' ' + code(compact_text(args));
}

// Returns what a call takes: "`fqn`", or "`query` from `asked_query`" if the argument has another name.
std::string takes_cell(const module::Call& call) {
  std::string cell;
  for (const module::Argument& each : call.takes) {
    const std::string_view kind = kind_name(each);
    if (!cell.empty()) cell += ", ";
    if (each.in_list || each.name.view() != kind) cell += code(each.name.view()) + " from ";
    cell += code(each.in_list ? '[' + std::string(kind) + ']' : std::string(kind));
  }
  return cell.empty() ? "nothing" : cell;
}

std::string follow_ups(const ServerTables& tables) {
  std::string text = table_head({"Answer of", "Follow-up", "Takes", "Reason"});
  for (const module::UsualRow* row : tables.rows()) {
    const auto calls = tables.calls(*row);
    if (calls.empty()) text += table_row({code(row->key), "none", "", ""});
    std::string key = code(row->key);
    for (const module::Call* call : calls) {
      text += table_row({key, call_cell(*call), takes_cell(*call), std::string(call->reason.view())});
      key.clear();
    }
  }
  return text;
}

std::string signals(const ServerTables& tables) {
  std::string text = table_head({"Answer of", "Fires at", "Step", "Takes", "Reason"});
  for (const module::SignalRow* row : tables.signals()) {
    const module::HitCondition& fires = row->signal->condition;
    const module::Call& call = row->signal->call;
    text +=
        table_row({code(row->key), std::to_string(fires.hits) + (fires.or_more ? " or more hits" : " hits"),
                   call_cell(call), takes_cell(call), std::string(call.reason.view())});
  }
  return text;
}

std::string dead_ends(const ServerTables& tables) {
  std::string text;
  for (const module::RowKey& each : tables.dead_ends())
    text += "- " + tool_cell(each.tool, each.action) + '\n';
  return text.empty() ? "None.\n" : text;
}

// The limits; those of the built-in tables, too, if these are printed.
std::string limits(bool are_built_in) {
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
         (are_built_in ? row("FAN_IN_FOR_IMPACT", module::FAN_IN_FOR_IMPACT,
                             "minimum number of callers or references for a blast-radius step")
                       : "") +
         row("MAX_STEP_FILES", module::MAX_STEP_FILES, "files that a step to recommended tests lists");
}

// The tables as a Mermaid flowchart in Markdown.
class Flowchart {
 public:
  explicit Flowchart(const ServerTables& tables) : tables_(tables) {
    for (const module::UsualRow* row : tables.rows()) {
      const auto calls = tables.calls(*row);
      if (calls.empty()) text_ += "  " + node('a', module::split_key(row->key)) + '\n';
      for (const module::Call* call : calls) add(row->key, " --> ", *call);
    }
    for (const module::SignalRow* row : tables.signals()) add(row->key, " -.-> ", row->signal->call);
  }

  std::string markdown() && { return std::move(text_) + "```\n"; }

 private:
  void add(std::string_view answer, const char* line, const module::Call& call) {
    text_ += "  " + node('a', module::split_key(answer)) + line;
    text_ += node('c', {call.tool.view(), action_of(call)}) + '\n';
  }

  // Returns the id of a node, and the first time also its label and its style.
  std::string node(char side, const module::RowKey& key) {
    std::string name(key.tool);
    if (key.action) name.append(":").append(*key.action);
    const auto [place, is_new] = numbers_.emplace(side + name, numbers_.size());
    std::string id = side + std::to_string(place->second);
    if (!is_new) return id;
    return id + "[\"" + label(name) + "\"]" + (tables_.leads_on(key) ? "" : ":::dead");
  }

  // Replaces characters that mean something to Mermaid by their codes. Next to a code the colon is one, too.
  static std::string label(const std::string& name) {
    constexpr std::string_view kSpecial = R"(:!"#$%&'()*+,/;<=>?@[\]^`{|}~ )";
    std::string text = vantrex::logging::printable(name);
    if (text.find_first_of(kSpecial.substr(1)) == std::string::npos) return text;
    std::string coded;
    for (const char byte : text) {
      const bool is_special = kSpecial.find(byte) != std::string_view::npos;
      coded += is_special ? '#' + std::to_string(byte) + ';' : std::string(1, byte);
    }
    return coded;
  }

  const ServerTables& tables_;
  std::map<std::string, std::size_t> numbers_;  // of the nodes
  std::string text_ =
      "Answers are on the left, the calls that they lead to on the right. Signals are dotted; what leads no\n"
      "further is dashed.\n\n```mermaid\nflowchart LR\n  classDef dead stroke-dasharray: 4 3\n";
};

struct CatalogueOptions {
  ServerOptions server;
  bool graph = false;
  bool json = false;
};

std::string markdown(const ServerTables& tables, bool lists_dead_ends, bool are_built_in) {
  std::string text =
      "## Usual follow-ups\n\n" + follow_ups(tables) +
      "\n## Signals\n\n`asked_fqn` and `asked_query` are taken from the request or, if that has "
      "none, from the answer; `asked_path` is taken from the request.\n\n" +
      signals(tables);
  if (lists_dead_ends) text += "\n## Without a follow-up\n\n" + dead_ends(tables);
  return text + "\n## Limits\n\n" + limits(are_built_in);
}

ExitStatus catalogue(CatalogueOptions& options) {
  const module::Catalogue* own = options.server.catalogue();
  if (options.json) {
    print_answer((own == nullptr ? module::Catalogue() : *own).to_json(), true);
    return ExitStatus::done;
  }
  const ServerTables tables(options.server.serves(), module::tables_of(own));
  requests::print(options.graph ? Flowchart(tables).markdown()
                                : markdown(tables, options.server.serves() != nullptr, own == nullptr));
  return ExitStatus::done;
}

}  // namespace

Command add_catalogue(CLI::App& program) {
  auto options = std::make_shared<CatalogueOptions>();
  CLI::App* parser = program.add_subcommand("catalogue", "Print the tables of steps as Markdown");
  options->server.add_to(*parser);
  parser->add_flag("--graph", options->graph, "Print them as a Mermaid flowchart in Markdown instead");
  parser->add_flag("--json", options->json, "Print them in the format of --catalogue instead")
      ->excludes("--graph");
  parser->footer(
      "With --serves, prints only the answers that the server gives and the steps that it has,\n"
      "and lists the answers that never get a step.");
  return {parser, [options] { return catalogue(*options); }};
}

}  // namespace next_steps_program

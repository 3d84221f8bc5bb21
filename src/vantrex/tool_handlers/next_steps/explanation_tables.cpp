#include <algorithm>
#include <optional>
#include <set>
#include <utility>
#include <variant>
#include <vector>

#include "vantrex/models/symbol.h"
#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/explanation_parts.h"
#include "vantrex/tool_handlers/next_steps/place.h"
#include "vantrex/tool_handlers/next_steps/usual.h"
#include "vantrex/workers/unknown_name.h"

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonList;
using values::JsonValue;
using workers::quoted;

namespace {

// "1 hit", "7 hits".
std::string counted_hits(const Integer& count) {
  return count.digits() + (count == Integer(1) ? " hit" : " hits");
}

std::string place_text(KeyPath path) {
  std::string place;
  for (const std::string_view key : path) append_key(place, key);
  return place;
}

// `kind "heading"` or `file "README.md"`: what makes a hit no code symbol.
std::string no_code_text(const JsonValue& hit) {
  const auto kind = hit["kind"].string();
  if (!models::is_code_symbol(kind, std::nullopt)) return "kind " + quoted(*kind);
  return "file " + quoted(hit["file"].string().value_or(""));
}

// The hits that have an fqn but are no code symbols: "1 hit has an fqn but is no code symbol: kind
// "heading"". Empty if there are none.
std::string passed_over_hits(const AnswerView& answer) {
  std::vector<const JsonValue*> hits;
  for (const JsonList* list : answer.hit_lists()) {
    for (std::size_t place = 0; list != nullptr && place < list->size(); ++place) {
      if ((*list)[place]["fqn"].string()) hits.push_back(&(*list)[place]);
    }
  }
  if (hits.empty()) return "";
  return counted_hits(Integer(hits.size())) +
         (hits.size() == 1 ? " has an fqn but is no code symbol: "
                           : " have an fqn but are no code symbols: ") +
         no_code_text(*hits[0]);
}

bool is_sought_in_hits(const Argument& argument) noexcept {
  return takes_from_hits(argument) && argument.kind != ArgumentKind::query;
}

// What the answer lacks: "no hits", "no fqn in any hit", "no files and no base branch".
std::string lack_text(const AnswerView& answer, const Lack& lack) {
  if (lack.argument == nullptr) return "no hits";
  const Argument& argument = *lack.argument;
  if (argument.kind == ArgumentKind::changed_files) return "no files and no base branch";
  if (argument.kind == ArgumentKind::fqn) {
    if (std::string hits = passed_over_hits(answer); !hits.empty()) return hits;
  }
  std::string_view name = kind_name(argument);
  if (is_asked(argument.kind)) name.remove_prefix(std::string_view("asked_").size());
  return "no " + std::string(name) + (is_sought_in_hits(argument) ? " in any hit" : "");
}

// Adds the calls of `row` that lack an argument. Returns whether one of them was sought in the hits.
bool add_absent(std::vector<AbsentHint>& absent, const AnswerView& answer, const UsualRow& row,
                const ServedTools* serves) {
  bool sought_in_hits = false;
  for (const Call& call : row.calls) {
    if (!is_served(call.tool.view(), action_of(call), serves)) continue;
    const auto outcome = follow_up_arguments(call, answer);
    const Lack* lack = std::get_if<Lack>(&outcome);
    if (lack == nullptr) continue;
    absent.push_back({to_dict(call), lack_text(answer, *lack)});
    sought_in_hits |= lack->argument != nullptr && is_sought_in_hits(*lack->argument);
  }
  return sought_in_hits;
}

// Why the number of hits keeps a signal silent: "12 hits, not 0", "7 hits, 8 are needed". Empty if it does
// not.
std::string lacking_hits(const AnswerView& answer, const HitCondition& condition) {
  const auto& count = answer.hit_count();
  if (!count) return "no count of hits";
  if (condition.holds(*count)) return "";
  const std::string wanted = std::to_string(condition.hits);
  return counted_hits(*count) + (condition.or_more ? ", " + wanted + " are needed" : ", not " + wanted);
}

// Why the signal, which may be null, gives no step; empty if it gives one or the server lacks its call.
std::string silence(const AnswerView& answer, const Signal* signal, const ServedTools* serves) {
  if (signal == nullptr || !is_served(signal->call.tool.view(), action_of(signal->call), serves)) return "";
  std::string why = lacking_hits(answer, signal->condition);
  const auto outcome = call_arguments(signal->call, answer);
  if (const Lack* lack = std::get_if<Lack>(&outcome)) {
    why += (why.empty() ? "" : ", ") + lack_text(answer, *lack);
  }
  return why;
}

// The tools and actions that the tables name.
std::vector<RowKey> names_in(const Tables& tables) {
  std::vector<RowKey> names;
  const auto add_call = [&](const Call& call) { names.push_back({call.tool.view(), action_of(call)}); };
  for (const UsualRow& row : tables.usual) {
    names.push_back(split_key(row.key));
    std::for_each(row.calls.begin(), row.calls.end(), add_call);
  }
  for (const SignalRow& row : tables.signals) {
    names.push_back(split_key(row.key));
    if (row.signal != nullptr) add_call(row.signal->call);
  }
  for (const MissCalls& calls : {tables.symbol_miss, tables.path_miss}) {
    for (const Call* call : {calls.near, calls.none}) {
      if (call != nullptr) names.push_back({call->tool.view(), std::nullopt});
    }
  }
  return names;
}

// `unknown action "caller" of symbol; did you mean "callers"?`. Empty if the action is known or near none of
// the known ones: a server may have more actions than its tables.
std::string misspelt_action(std::string_view tool, std::string_view action,
                            const std::vector<std::string_view>& known) {
  if (std::find(known.begin(), known.end(), action) != known.end()) return "";
  const auto nearest = workers::nearest_name(action, known);
  if (!nearest) return "";
  return "unknown action " + quoted(action) + " of " + std::string(tool) + "; did you mean " +
         quoted(*nearest) + "?";
}

bool has_tool(const ServedTools& serves, std::string_view tool) noexcept {
  const auto entries = serves.entries();
  return std::ranges::find(entries, tool, &ServedTool::tool) != entries.end();
}

// That the tool has no row and nothing names it, or that its action is misspelt; empty for neither.
std::string unknown_call(const Tables& tables, bool has_row, std::string_view tool,
                         const FinishOptions& options) {
  std::set<std::string_view> tools;
  std::vector<std::string_view> actions;
  for (const auto& [each, action] : names_in(tables)) {
    tools.insert(each);
    if (each == tool && action) actions.push_back(*action);
  }
  const bool is_known =
      has_row || tools.contains(tool) || (options.serves != nullptr && has_tool(*options.serves, tool));
  if (!is_known && !tools.empty()) {
    return workers::unknown_name("tool", tool, std::vector(tools.begin(), tools.end()));
  }
  const std::optional<std::string_view> action = options.action;
  return action ? misspelt_action(tool, *action, actions) : "";
}

// The counts before the first that is one: "total" is ignored: it is no integer.
void append_ignored_counts(std::vector<std::string>& remarks, const AnswerView& answer) {
  for (const KeyPath path : answer.tables().counts) {
    const JsonValue& count = value_at(answer.response, path);
    if (stated_integer(count)) return;
    const std::string place = path.size() == 1 ? quoted(path[0]) : place_text(path);
    if (!count.is_null()) remarks.push_back(place + " is ignored: it is no integer");
  }
}

// Whether the answer has a hit list, or its server has none.
bool has_hit_list(const AnswerView& answer) noexcept {
  const auto lists = answer.hit_lists();
  return lists.empty() || std::any_of(lists.begin(), lists.end(), [](const auto* list) { return list; });
}

std::string no_list_text(const Tables& tables) {
  std::string names;
  for (const KeyPath path : tables.hit_lists) names += (names.empty() ? "" : ", ") + place_text(path);
  return "no hits: the answer has no list with one of the names " + names;
}

}  // namespace

void explain_tables(Explanation& explained, const AnswerView& answer, std::string_view tool,
                    const FinishOptions& options) {
  const UsualRow* usual = answer.tables().usual_row(tool, options.action);
  const SignalRow* signal = answer.tables().signal_row(tool, options.action);
  bool sought_in_hits = false;
  if (usual != nullptr) {
    const std::optional<std::string_view> action = options.action;
    explained.rows.usual = usual->key;
    explained.rows.usual_of_tool = usual->key == tool && action;
    sought_in_hits = add_absent(explained.absent, answer, *usual, options.serves);
  }
  if (signal != nullptr) {
    explained.rows.signal = signal->key;
    std::string why = silence(answer, signal->signal, options.serves);
    if (!why.empty()) explained.silent.push_back({explained.rows.signal, std::move(why)});
  }
  std::string unknown = unknown_call(answer.tables(), usual != nullptr || signal != nullptr, tool, options);
  if (!unknown.empty()) explained.remarks.push_back(std::move(unknown));
  append_ignored_counts(explained.remarks, answer);
  if (sought_in_hits && !has_hit_list(answer)) explained.remarks.push_back(no_list_text(answer.tables()));
}

}  // namespace vantrex::tool_handlers::next_steps

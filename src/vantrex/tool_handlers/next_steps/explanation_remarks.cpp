#include "vantrex/tool_handlers/next_steps/explanation_remarks.h"

#include <algorithm>
#include <optional>

#include "vantrex/models/symbol.h"
#include "vantrex/tool_handlers/next_steps/assembly.h"
#include "vantrex/tool_handlers/next_steps/place.h"
#include "vantrex/workers/unknown_name.h"

namespace vantrex::tool_handlers::next_steps {

using values::Integer;
using values::JsonField;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;
using workers::quoted;

namespace {

using Names = std::vector<std::string_view>;

// "1 hit", "7 hits".
std::string counted_hits(const Integer& count) {
  return count.digits() + (count == Integer(1) ? " hit" : " hits");
}

std::string place_text(KeyPath path) {
  std::string place;
  for (const std::string_view key : path) append_key(place, key);
  return place;
}

// `"total"`, or the place of a nested field: page.total
std::string field_text(KeyPath path) {
  return path.size() == 1 ? quoted(path[0]) : place_text(path);
}

// --- what an answer lacks

// `kind "heading"` or `file "README.md"`: what makes a hit no code symbol.
std::string no_code_text(const JsonObject& hit) {
  const auto kind = hit["kind"].string();
  if (!models::is_code_symbol(kind, std::nullopt)) return "kind " + quoted(*kind);
  return "file " + quoted(hit["file"].string().value_or(""));
}

// The hits that have an fqn but are no code symbols: "1 hit has an fqn but is no code symbol: kind
// "heading"". Empty if there are none.
std::string passed_over_hits(const AnswerView& answer) {
  std::size_t count = 0;
  const JsonObject* first = nullptr;
  for (const JsonList* list : answer.hit_lists()) {
    for (std::size_t place = 0; list != nullptr && place < list->size(); ++place) {
      const JsonObject* hit = (*list)[place].object();
      if (hit == nullptr || !(*hit)["fqn"].string()) continue;
      if (count++ == 0) first = hit;
    }
  }
  if (count == 0) return "";
  return counted_hits(Integer(count)) +
         (count == 1 ? " has an fqn but is no code symbol: " : " have an fqn but are no code symbols: ") +
         no_code_text(*first);
}

// The field of the answer itself that an argument may come from; empty if there is none.
std::string_view answer_field(const Argument& argument) {
  switch (argument.kind) {
    case ArgumentKind::path:
      return "file";
    case ArgumentKind::fqn:
    case ArgumentKind::asked_fqn:
      return "fqn";
    case ArgumentKind::query:
    case ArgumentKind::asked_query:
      return "query";
    case ArgumentKind::own:
      for (const ArgumentSource& source : argument.own->sources) {
        if (source.in == ArgumentSource::In::answer && source.path.size() == 1) return source.path[0];
      }
      return "";
    default:
      return "";
  }
}

// `; "symbol" has one` if an object in the answer has a string, or for an own kind an integer, in the field
// that was looked for in the answer itself.
std::string one_level_deeper(const AnswerView& answer, const Argument& argument) {
  const std::string_view field = answer_field(argument);
  if (field.empty()) return "";
  for (const JsonField& each : answer.response) {
    const JsonValue& value = each.value[field];
    const bool is_one = value.string() || (argument.own != nullptr && value.kind() == Kind::integer);
    if (is_one && !value.is_empty()) return "; " + quoted(each.key.view()) + " has one";
  }
  return "";
}

// "fqn" for the kind "asked_fqn", too.
std::string_view name_of(const Argument& argument) {
  std::string_view name = kind_name(argument);
  if (is_asked(argument.kind)) name.remove_prefix(std::string_view("asked_").size());
  return name;
}

// --- the names in the tables

// Calls `visit(tool, action)` for each key and each call of the tables.
template <typename Visit>
void visit_names(const Tables& tables, Visit visit) {
  const auto visit_key = [&](std::string_view key) {
    const auto [tool, action] = split_key(key);
    visit(tool, action);
  };
  const auto visit_call = [&](const Call& call) { visit(call.tool.view(), action_of(call)); };
  for (const UsualRow& row : tables.usual) {
    visit_key(row.key);
    std::for_each(row.calls.begin(), row.calls.end(), visit_call);
  }
  for (const SignalRow& row : tables.signals) {
    visit_key(row.key);
    if (row.signal != nullptr) visit_call(row.signal->call);
  }
  for (const MissCalls& calls : {tables.symbol_miss, tables.path_miss}) {
    for (const Call* call : {calls.near, calls.none}) {
      if (call != nullptr) visit(call->tool.view(), std::optional<std::string_view>());
    }
  }
}

Names sorted(Names names) {
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

Names tools_of(const Tables& tables) {
  Names tools;
  visit_names(tables, [&](std::string_view tool, const auto& /*action*/) { tools.push_back(tool); });
  return sorted(std::move(tools));
}

Names actions_of(const Tables& tables, std::string_view tool) {
  Names actions;
  visit_names(tables, [&](std::string_view each, const auto& action) {
    if (each == tool && action) actions.push_back(*action);
  });
  return sorted(std::move(actions));
}

// --- likely mistakes

// `unknown action "caller" of symbol; did you mean "callers"?`. Empty if the name is known or near none of
// the known ones: a server may have more tools and actions than its tables.
std::string misspelt(const std::string& what, std::string_view name, const std::string& of,
                     const Names& known) {
  if (std::binary_search(known.begin(), known.end(), name)) return "";
  const auto nearest = workers::nearest_name(name, known);
  if (!nearest) return "";
  return what + ' ' + quoted(name) + of + "; did you mean " + quoted(*nearest) + "?";
}

std::string misspelt_action(const Tables& tables, const std::string& what, std::string_view tool,
                            std::string_view action) {
  return misspelt(what, action, " of " + std::string(tool), actions_of(tables, tool));
}

void append_unknown_names(Remarks& remarks, const Tables& tables, std::string_view tool,
                          const FinishOptions& options) {
  const std::optional<std::string_view> action = options.action;
  const UsualRow* usual = tables.usual_row(tool, action);
  const SignalRow* signal = tables.signal_row(tool, action);
  if (usual == nullptr && signal == nullptr) {
    const Names tools = tools_of(tables);
    const bool is_served = options.serves != nullptr && options.serves->contains_any_of(tool);
    const bool is_known = is_served || std::binary_search(tools.begin(), tools.end(), tool);
    if (!is_known && !tools.empty()) remarks.push_back(workers::unknown_name("tool", tool, tools));
  }
  const bool has_row = (usual != nullptr && usual->key != tool) || (signal != nullptr && signal->key != tool);
  if (action && !has_row) remarks.push_back(misspelt_action(tables, "unknown action", tool, *action));
}

// The entries of `serves` that name nothing in the tables, but nearly do.
void append_unknown_served(Remarks& remarks, const Tables& tables, const ServedTools* serves) {
  if (serves == nullptr) return;
  const Names tools = tools_of(tables);
  for (const ServedTool& each : serves->entries()) {
    const std::optional<std::string_view> action = each.action;
    if (!std::binary_search(tools.begin(), tools.end(), each.tool)) {
      remarks.push_back(misspelt("serves: unknown tool", each.tool, "", tools));
    } else if (action) {
      remarks.push_back(misspelt_action(tables, "serves: unknown action", each.tool, *action));
    }
  }
}

// The first count that is one, and the counts before it that are ignored.
void append_counts(Remarks& remarks, const AnswerView& answer) {
  for (const KeyPath path : answer.tables().counts) {
    const JsonValue& count = value_at(answer.response, path);
    if (const auto stated = stated_integer(count)) {
      const auto lists = answer.hit_lists();
      const auto list = std::find_if(lists.begin(), lists.end(), [](const JsonList* each) { return each; });
      if (list == lists.end() || *stated >= (*list)->size()) return;
      const KeyPath name = answer.tables().hit_lists[static_cast<std::size_t>(list - lists.begin())];
      remarks.push_back(field_text(path) + " is " + stated->digits() + ", but " + field_text(name) + " has " +
                        counted_hits(Integer((*list)->size())));
      return;
    }
    if (!count.is_null()) remarks.push_back(field_text(path) + " is ignored: it is no integer");
  }
}

// That no list holds hits, if a call of the row takes an argument from them.
void append_no_lists(Remarks& remarks, const AnswerView& answer, const UsualRow* row,
                     const ServedTools* serves) {
  const auto lists = answer.hit_lists();
  const bool has_list = std::any_of(lists.begin(), lists.end(), [](const auto* list) { return list; });
  if (row == nullptr || has_list || lists.empty() || answer.has_no_hits()) return;
  const auto lacks_hit = [&](const Call& call) {
    if (!is_served(call.tool.view(), action_of(call), serves)) return false;
    const auto outcome = follow_up_arguments(call, answer);
    const Lack* lack = std::get_if<Lack>(&outcome);
    return lack != nullptr && lack->argument->kind != ArgumentKind::query && takes_from_hits(*lack->argument);
  };
  if (std::none_of(row->calls.begin(), row->calls.end(), lacks_hit)) return;
  std::string names;
  for (const KeyPath path : answer.tables().hit_lists)
    names += (names.empty() ? "" : ", ") + place_text(path);
  remarks.push_back("no hits: the answer has no list with one of the names " + names);
}

// Why an entry of the tool's own list is no step; empty if it is one.
std::string lack_of_step(const JsonValue& entry) {
  const JsonObject* step = entry.object();
  if (step == nullptr) return "is no object";
  if ((*step)["tool"].kind() != Kind::string) return "has no \"tool\" that is a string";
  if ((*step)["args"].kind() != Kind::object) return "has no \"args\" that is an object";
  if ((*step)["reason"].kind() != Kind::string) return "has no \"reason\" that is a string";
  return "";
}

}  // namespace

std::string lack_text(const AnswerView& answer, const Lack& lack) {
  if (lack.argument == nullptr) return "no hits";
  const Argument& argument = *lack.argument;
  if (argument.kind == ArgumentKind::changed_files) return "no files and no base branch";
  if (argument.kind == ArgumentKind::fqn) {
    if (std::string hits = passed_over_hits(answer); !hits.empty()) return hits;
  }
  const bool in_hits = takes_from_hits(argument) && argument.kind != ArgumentKind::query;
  return "no " + std::string(name_of(argument)) + (in_hits ? " in any hit" : "") +
         one_level_deeper(answer, argument);
}

std::string lacking_hits(const AnswerView& answer, const HitCondition& condition) {
  const auto& count = answer.hit_count();
  if (!count) return "no count of hits";
  if (condition.holds(*count)) return "";
  const std::string wanted = std::to_string(condition.hits);
  return counted_hits(*count) + (condition.or_more ? ", " + wanted + " are needed" : ", not " + wanted);
}

void append_remarks_on_own_steps(Remarks& remarks, const JsonObject& answer, const FinishOptions& options) {
  const JsonValue& own = answer["next_steps"];
  if (own.list() == nullptr) {
    if (!own.is_null()) remarks.emplace_back("\"next_steps\" is ignored: it is no list");
    return;
  }
  const JsonList& steps = *own.list();
  if (!steps.empty()) {
    remarks.push_back("own steps: " + std::to_string(steps.size()) + "; the tables were not asked");
  }
  for (std::size_t position = 0; position < steps.size(); ++position) {
    std::string remark = "next_steps";
    append_position(remark, position);
    if (const std::string lack = lack_of_step(steps[position]); !lack.empty()) {
      remarks.push_back(remark.append(" is sent as it is, but is no step: it ").append(lack));
    } else if (!is_served(steps[position], options.serves)) {
      remarks.push_back(remark.append(" calls what the server does not have"));
    }
  }
}

void append_remarks_on_tables(Remarks& remarks, const AnswerView& answer, std::string_view tool,
                              const FinishOptions& options) {
  append_unknown_names(remarks, answer.tables(), tool, options);
  append_unknown_served(remarks, answer.tables(), options.serves);
  append_counts(remarks, answer);
  append_no_lists(remarks, answer, answer.tables().usual_row(tool, options.action), options.serves);
  std::erase(remarks, "");
}

}  // namespace vantrex::tool_handlers::next_steps

#include "fuzz/support/naive.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "vantrex/models/symbol.h"
#include "vantrex/tool_handlers/next_steps/follow_ups.h"
#include "vantrex/values/integer.h"

namespace vantrex::fuzz::naive {

using tool_handlers::next_steps::NEXT_STEPS;
using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

using Values = std::vector<JsonValue>;
using Steps = Values;
using Rules = std::set<std::string>;

JsonValue without_nulls(const JsonValue& value) {
  if (const JsonList* list = value.list()) {
    Values kept;
    for (const JsonValue& item : *list) kept.push_back(without_nulls(item));
    return kept;
  }
  if (value.object() == nullptr) return value;
  JsonObject kept;
  for (const auto& [key, member] : *value.object()) {
    if (!member.is_null()) kept.set(key, without_nulls(member));
  }
  return kept;
}

JsonObject make_step(const std::string& tool, const std::string& reason, const JsonObject& args) {
  return {{"tool", tool}, {"args", args}, {"reason", reason}};
}

// An answer and the arguments of its request. `reached` collects the rules that decide something.
struct Answer {
  const JsonObject& fields;
  const JsonObject& arguments;
  Rules& reached;

  std::vector<std::pair<std::string, const JsonList*>> hit_lists() const {
    std::vector<std::pair<std::string, const JsonList*>> lists;
    for (const char* name : {"symbols", "results", "matches", "definitions", "callers", "references",
                             "dead_symbols", "files", "tests", "components"}) {
      if (fields[name].list() != nullptr) lists.emplace_back(name, fields[name].list());
    }
    return lists;
  }

  JsonValue hit_count() const {
    for (const char* name : {"total_count", "total"}) {
      if (fields[name].boolean()) reached.insert("boolean count");
      if (fields[name].boolean()) return *fields[name].boolean() ? 1 : 0;
      if (fields[name].kind() == Kind::integer) return fields[name];
    }
    if (hit_lists().empty()) return nullptr;
    return hit_lists().front().second->size();
  }
  bool no_hits() const { return json_text(hit_count()) == "0"; }

  JsonValue asked_or_answered(const char* name) const {
    return arguments[name].is_empty() ? fields[name] : arguments[name];
  }

  JsonValue taken(const std::string& takes) const {
    if (takes == "query") return asked_or_answered("query");
    if (takes == "fqn" && fields["fqn"].string()) return fields["fqn"];
    if (takes == "path" && fields["file"].string()) return fields["file"];
    for (const auto& [name, hits] : hit_lists()) {
      for (const JsonValue& item : *hits) {
        if (takes == "path" && name == "files" && item.string()) return item;
        if (item.object() == nullptr) continue;
        const JsonObject& hit = *item.object();
        const bool is_code = models::is_code_symbol(hit["kind"].string(), hit["file"].string());
        if (!is_code) reached.insert("no code");
        if (takes == "fqn" && !is_code) continue;
        const JsonValue& value = hit[takes == "component" ? "name" : takes];
        if (value.string()) return value;
      }
    }
    if (takes == "component" || !arguments[takes].string()) return nullptr;
    reached.insert("requested " + takes);
    return arguments[takes];
  }

  Values answer_files() const {
    Values found;
    if (fields["file"].string()) found.push_back(fields["file"]);
    for (const char* key : {"affected_files", "files"}) {
      if (fields[key].list() == nullptr) continue;
      Values listed;
      for (const JsonValue& item : *fields[key].list()) {
        const JsonValue path = item.object() != nullptr ? (*item.object())["path"] : item;
        if (path.string()) listed.push_back(path);
      }
      found.insert(found.end(), listed.begin(), listed.end());
      if (!listed.empty()) break;
    }
    if (found.empty() && arguments["path"].string()) found.push_back(arguments["path"]);
    Values unique;
    for (const JsonValue& path : found) {
      if (std::find(unique.begin(), unique.end(), path) == unique.end()) unique.push_back(path);
    }
    return unique;
  }

  JsonObject tests_scope() const {
    Values files = answer_files();
    const JsonValue& base = fields["base_branch"];
    const bool listed_all = files.size() <= 10 && fields["files_omitted"].is_empty();
    if (base.string() && !base.is_empty() && !(!files.empty() && listed_all)) {
      reached.insert("scope base_branch");
      return {{"base_branch", base}};
    }
    reached.insert(files.empty()       ? "scope empty"
                   : files.size() > 10 ? "scope first files"
                                       : "scope changed_files");
    if (files.empty()) return {};
    if (files.size() > 10) files.resize(10);
    return {{"changed_files", files}};
  }

  Steps usual(const std::string& tool, const std::string& action) const {
    const auto* row = NEXT_STEPS.find(tool + ":" + action);
    if (row == nullptr) row = NEXT_STEPS.find(tool);
    if (row == nullptr) return {};
    reached.insert("row " + std::string(row->key));
    Steps steps;
    for (const auto* hint : row->hints()) {
      JsonObject args;
      if (hint->action) args.set("action", *hint->action);
      const std::string takes(hint->takes ? text(*hint->takes).view() : "");
      if (takes == "changed_files") {
        const JsonObject scope = tests_scope();
        if (scope.empty()) continue;
        for (const auto& [name, value] : scope) args.set(name, value);
      } else if (takes != "") {
        const JsonValue value = no_hits() ? JsonValue() : taken(takes);
        if (value.is_null()) continue;
        args.set(takes, value);
      }
      steps.push_back(JsonObject{{"tool", hint->tool}, {"args", args}, {"reason", hint->reason}});
    }
    return steps;
  }

  Steps signals(const std::string& tool, const std::string& action) const {
    const std::string key = tool + ":" + action;
    const JsonValue query = asked_or_answered("query");
    const JsonValue fqn = asked_or_answered("fqn");
    const JsonValue& path = arguments["path"];
    const bool many = !hit_count().is_null() && *hit_count().integer() >= Integer(8);
    JsonObject found;
    if (key == "search:symbols" || key == "search:code" || key == "search:definition") {
      if (!no_hits() || query.is_empty()) return {};
      found = make_step("search", "No hits: search by meaning", {{"action", "semantic"}, {"query", query}});
    } else if (key == "search:semantic") {
      if (!no_hits() || query.is_empty()) return {};
      found = make_step("explore", "No close match: ask explore", {{"query", query}});
    } else if (key == "symbol:callers" || key == "symbol:references") {
      if (!many || fqn.is_empty()) return {};
      found = make_step("quality", json_text(hit_count()) + " " + action + ": check the blast radius",
                        {{"action", "impact"}, {"fqn", fqn}});
    } else if (key == "tests:for_file") {
      if (!no_hits() || !path.string()) return {};
      found = make_step("tests", "No test covers it: tests for a change of it",
                        {{"action", "recommended"}, {"changed_files", JsonList::of(path)}});
    } else {
      return {};
    }
    reached.insert("signal " + key);
    return {found};
  }
};

Steps without_repeats(const Steps& steps) {
  std::set<std::string> seen;
  Steps kept;
  for (const JsonValue& step : steps) {
    const JsonList call = JsonList::of((*step.object())["tool"], (*step.object())["args"]);
    if (seen.insert(json_text(call, true)).second) kept.push_back(step);
  }
  return kept;
}

// The steps whose calls the server has; all `steps` when the request does not name the served tools.
Steps only_served(const Request& request, const Steps& steps, const std::string& rule, Rules& reached) {
  if (!request.serves) return steps;
  const auto& names = request.serves->names;
  Steps kept;
  for (const JsonValue& step : steps) {
    const std::string tool(*(*step.object())["tool"].string());
    const auto action = (*(*step.object())["args"].object())["action"].string();
    const bool whole = std::find(names.begin(), names.end(), tool) != names.end();
    const bool named =
        action && std::find(names.begin(), names.end(), tool + ":" + std::string(*action)) != names.end();
    if (whole || named) kept.push_back(step);
    reached.insert(rule + (whole ? " of a served tool" : named ? " of a served action" : " not served"));
  }
  return kept;
}

Steps within_share(const JsonObject& response, Steps steps, std::size_t keep, Rules& reached) {
  const std::size_t size = json_text(response).size();
  const std::size_t hints = hint_size(response);
  while (steps.size() > keep) {
    const std::size_t added = json_text(steps).size() + 14;
    const double room = std::max(0.15 * static_cast<double>(size + added), 320.0);
    reached.insert(room > 320 ? "room by share" : "room by floor");
    if (static_cast<double>(hints + added) <= room) break;
    steps.pop_back();
    reached.insert("dropped");
  }
  return steps;
}

}  // namespace

std::size_t hint_size(const JsonValue& value) {
  static const std::set<std::string_view> kKeys = {"tip",  "next_steps", "note", "notes",
                                                   "tips", "hints",      "hint"};
  std::size_t bytes = 0;
  if (const JsonList* list = value.list()) {
    for (const JsonValue& item : *list) bytes += hint_size(item);
  }
  if (const JsonObject* object = value.object()) {
    for (const auto& [key, member] : *object) {
      bytes += kKeys.count(key.view()) > 0 ? json_text(member).size() : hint_size(member);
    }
  }
  return bytes;
}

Finished finish(const Request& request) {
  const JsonValue cleaned = without_nulls(request.answer);
  Finished finished = {*cleaned.object(), {}};
  JsonObject& answer = finished.answer;
  if (!request.freshness.is_null()) answer.set("freshness", request.freshness);

  const JsonValue own = answer.remove("next_steps").value_or(nullptr);
  Steps steps;
  std::size_t keep = 1;
  if (own.list() != nullptr && !own.list()->empty()) {
    steps.assign(own.list()->begin(), own.list()->end());
    finished.reached.insert("own steps");
  } else {
    const JsonObject given = request.arguments.value_or(JsonObject());
    const Answer rules = {answer, given, finished.reached};
    const std::string action = request.action.value_or("None");
    steps = only_served(request, rules.signals(request.tool, action), "signal", finished.reached);
    keep = std::max(std::size_t{1}, std::min(steps.size(), std::size_t{3}));
    const Steps usual = only_served(request, rules.usual(request.tool, action), "usual", finished.reached);
    steps.insert(steps.end(), usual.begin(), usual.end());
    steps = without_repeats(steps);
    if (steps.size() > 3) steps.resize(3);
  }
  steps = within_share(answer, steps, keep, finished.reached);
  if (!steps.empty()) answer.set("next_steps", steps);
  return finished;
}

}  // namespace vantrex::fuzz::naive

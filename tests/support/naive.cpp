#include "support/naive.h"

#include <algorithm>
#include <map>
#include <vector>

#include "vantrex/models/symbol.h"
#include "vantrex/values/integer.h"

namespace vantrex::tests::naive {

using values::Integer;
using values::JsonField;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;
using values::Kind;

namespace {

JsonValue without_nulls(const JsonValue& value) {
  if (const JsonList* list = value.list()) {
    JsonList kept;
    for (const JsonValue& item : *list) kept.push_back(without_nulls(item));
    return kept;
  }
  if (const JsonObject* object = value.object()) {
    JsonObject kept;
    for (const auto& [key, member] : *object) {
      if (!member.is_null()) kept.set(key, without_nulls(member));
    }
    return kept;
  }
  return value;
}

const std::set<std::string> kHintKeys = {"tip", "next_steps", "note", "notes", "tips", "hints", "hint"};

std::size_t hint_size(const JsonValue& value) {
  std::size_t bytes = 0;
  if (const JsonObject* object = value.object()) {
    for (const auto& [key, member] : *object) {
      const bool is_hint = kHintKeys.count(std::string(key.view())) > 0;
      bytes += is_hint ? json_text(member).size() : hint_size(member);
    }
  }
  if (const JsonList* list = value.list()) {
    for (const JsonValue& item : *list) bytes += hint_size(item);
  }
  return bytes;
}

// An empty action or kind of argument stands for an absent one.
struct Hint {
  std::string tool, reason, action, takes;
};
const Hint kDetail = {"symbol", "Details of the best hit", "detail", "fqn"};
const Hint kCallers = {"symbol", "Who calls the best hit", "callers", "fqn"};
const Hint kReferences = {"symbol", "Every use of it", "references", "fqn"};
const Hint kFileSymbols = {"file", "Symbols of the first file", "symbols", "path"};
const Hint kChangedTests = {"tests", "Tests to run for these files", "recommended", "changed_files"};

const std::map<std::string, std::vector<Hint>> kNextSteps = {
    {"status", {{"architecture", "The components of the code", "components", ""}}},
    {"search", {kDetail, kCallers}},
    {"search:code", {kFileSymbols}},
    {"symbol", {kReferences, kCallers}},
    {"symbol:detail", {kCallers, kReferences, {"tests", "Its file's tests", "for_file", "path"}}},
    {"symbol:callers", {kReferences}},
    {"symbol:references", {kCallers}},
    {"file", {kDetail, {"file", "What it imports", "imports", "path"}}},
    {"file:imports", {kFileSymbols}},
    {"file:related", {kFileSymbols}},
    {"files", {kFileSymbols}},
    {"architecture", {{"architecture", "What it depends on", "dependencies", "component"}}},
    {"git", {kChangedTests, {"context", "Context for reviewing the changes", "delta", ""}}},
    {"git:hotspots", {kFileSymbols}},
    {"quality", {{"symbol", "Check it has no references", "references", "fqn"}}},
    {"quality:impact", {kChangedTests}},
    {"quality:circular_deps", {}},
    {"quality:duplicates", {kDetail}},
    {"context", {kChangedTests}},
    {"tests", {kFileSymbols}},
};

const std::map<std::string, std::string> kSignals = {
    {"search:symbols", "search by meaning"},
    {"search:code", "search by meaning"},
    {"search:definition", "search by meaning"},
    {"search:semantic", "ask explore"},
    {"symbol:callers", "blast radius"},
    {"symbol:references", "blast radius"},
    {"tests:for_file", "untested"},
};

const std::vector<std::string> kHitLists = {"symbols", "results",    "matches",      "definitions",
                                            "callers", "references", "dead_symbols", "files",
                                            "tests",   "components"};

JsonObject make_step(const std::string& tool, const std::string& reason, const JsonObject& args) {
  JsonObject step;
  step.set("tool", tool);
  step.set("args", args);
  step.set("reason", reason);
  return step;
}

// One answer on its way; `reached` collects the rules that decide something.
struct Answer {
  const JsonObject& fields;
  const JsonObject& arguments;
  std::set<std::string>& reached;

  JsonValue hit_count() const {
    for (const char* name : {"total_count", "total"}) {
      if (const auto boolean = fields[name].boolean()) {
        reached.insert("boolean count");
        return *boolean ? 1 : 0;
      }
      if (fields[name].kind() == Kind::integer) return fields[name];
    }
    for (const std::string& name : kHitLists) {
      if (const JsonList* hits = fields[name].list()) return hits->size();
    }
    return nullptr;
  }
  bool no_hits() const { return json_text(hit_count()) == "0"; }

  static bool is_code(const JsonObject& hit) {
    return models::is_code_symbol(hit["kind"].string(), hit["file"].string());
  }

  JsonValue asked_or_answered(const char* name) const {
    return arguments[name].is_empty() ? fields[name] : arguments[name];
  }

  JsonValue taken(const std::string& takes) const {
    if (takes == "query") return asked_or_answered("query");
    if (takes == "fqn" && fields["fqn"].string()) return fields["fqn"];
    if (takes == "path" && fields["file"].string()) return fields["file"];
    for (const std::string& name : kHitLists) {
      if (fields[name].list() == nullptr) continue;
      for (const JsonValue& item : *fields[name].list()) {
        if (const JsonObject* hit = item.object()) {
          if (takes == "fqn" && !is_code(*hit)) {
            reached.insert("no code");
            continue;
          }
          const JsonValue& value = (*hit)[takes == "component" ? "name" : takes];
          if (value.string()) return value;
        }
        if (takes == "path" && name == "files" && item.string()) return item;
      }
    }
    if (takes != "component" && arguments[takes].string()) {
      reached.insert("requested " + takes);
      return arguments[takes];
    }
    return nullptr;
  }

  std::vector<JsonValue> answer_files() const {
    std::vector<JsonValue> found;
    if (fields["file"].string()) found.push_back(fields["file"]);
    for (const char* key : {"affected_files", "files"}) {
      if (fields[key].list() == nullptr) continue;
      std::vector<JsonValue> listed;
      for (const JsonValue& item : *fields[key].list()) {
        const JsonValue path = item.object() != nullptr ? (*item.object())["path"] : item;
        if (path.string()) listed.push_back(path);
      }
      found.insert(found.end(), listed.begin(), listed.end());
      if (!listed.empty()) break;
    }
    if (found.empty() && arguments["path"].string()) found.push_back(arguments["path"]);
    std::vector<JsonValue> unique;
    for (const JsonValue& path : found) {
      if (std::find(unique.begin(), unique.end(), path) == unique.end()) unique.push_back(path);
    }
    return unique;
  }

  JsonObject tests_scope() const {
    const std::vector<JsonValue> files = answer_files();
    const JsonValue& base = fields["base_branch"];
    const bool listed_all = files.size() <= 10 && fields["files_omitted"].is_empty();
    JsonObject scope;
    if (base.string() && *base.string() != "" && !(!files.empty() && listed_all)) {
      scope.set("base_branch", base);
      reached.insert("scope base_branch");
    } else if (!files.empty()) {
      scope.set("changed_files",
                JsonList(std::vector(files.begin(), files.begin() + static_cast<std::ptrdiff_t>(std::min(
                                                                        files.size(), std::size_t{10})))));
      reached.insert(files.size() > 10 ? "scope first files" : "scope changed_files");
    } else {
      reached.insert("scope empty");
    }
    return scope;
  }

  std::vector<JsonValue> usual(const std::string& tool, const std::string& action) const {
    std::string key = tool + ":" + action;
    if (kNextSteps.count(key) == 0) key = tool;
    if (kNextSteps.count(key) == 0) return {};
    reached.insert("row " + key);
    std::vector<JsonValue> steps;
    for (const Hint& hint : kNextSteps.at(key)) {
      JsonObject args;
      args.set("action", hint.action);
      if (hint.takes == "changed_files") {
        const JsonObject scope = tests_scope();
        if (scope.empty()) continue;
        for (const JsonField& field : scope) args.set(field.key, field.value);
      } else if (hint.takes != "") {
        if (no_hits()) continue;
        const JsonValue value = taken(hint.takes);
        if (value.is_null()) continue;
        args.set(hint.takes, value);
      }
      steps.push_back(make_step(hint.tool, hint.reason, args));
    }
    return steps;
  }

  std::vector<JsonValue> signals(const std::string& tool, const std::string& action) const {
    const auto row = kSignals.find(tool + ":" + action);
    if (row == kSignals.end()) return {};
    const std::string& signal = row->second;
    const JsonValue query = asked_or_answered("query");
    const JsonValue fqn = asked_or_answered("fqn");
    const JsonValue& path = arguments["path"];
    JsonObject found;
    if (signal == "search by meaning" && no_hits() && !query.is_empty()) {
      found = make_step("search", "No hits: search by meaning", {{"action", "semantic"}, {"query", query}});
    } else if (signal == "ask explore" && no_hits() && !query.is_empty()) {
      found = make_step("explore", "No close match: ask explore", {{"query", query}});
    } else if (signal == "untested" && no_hits() && path.string()) {
      found = make_step("tests", "No test covers it: tests for a change of it",
                        {{"action", "recommended"}, {"changed_files", JsonList::of(path)}});
    } else if (signal == "blast radius" && !hit_count().is_null() && *hit_count().integer() >= Integer(8) &&
               !fqn.is_empty()) {
      const std::string reason = json_text(hit_count()) + " " + action + ": check the blast radius";
      found = make_step("quality", reason, {{"action", "impact"}, {"fqn", fqn}});
    } else {
      return {};
    }
    reached.insert("signal " + signal);
    return {found};
  }
};

void drop_repeats(std::vector<JsonValue>& steps) {
  std::set<std::string> seen;
  std::vector<JsonValue> kept;
  for (const JsonValue& step : steps) {
    const JsonList call = JsonList::of((*step.object())["tool"], (*step.object())["args"]);
    if (seen.insert(json_text(call, true)).second) kept.push_back(step);
  }
  steps = kept;
}

void fit(const JsonObject& response, std::vector<JsonValue>& steps, std::size_t keep,
         std::set<std::string>& reached) {
  const std::size_t size = json_text(response).size();
  const std::size_t hints = hint_size(response);
  while (steps.size() > keep) {
    const std::size_t added = json_text(JsonList(steps)).size() + 14;
    const double room = std::max(0.15 * static_cast<double>(size + added), 320.0);
    reached.insert(room > 320 ? "room by share" : "room by floor");
    if (static_cast<double>(hints + added) <= room) return;
    steps.pop_back();
    reached.insert("dropped");
  }
}

}  // namespace

Finished finish(const Request& request) {
  Finished finished;
  JsonObject& answer = finished.answer;
  const JsonValue cleaned = without_nulls(request.answer);
  answer = *cleaned.object();
  if (!request.freshness.is_null()) answer.set("freshness", request.freshness);

  std::vector<JsonValue> steps;
  std::size_t keep = 1;
  const std::optional<JsonValue> own = answer.remove("next_steps");
  if (own && own->list() != nullptr && !own->list()->empty()) {
    steps.assign(own->list()->begin(), own->list()->end());
    finished.reached.insert("own steps");
  } else {
    const JsonObject given = request.arguments ? *request.arguments : JsonObject();
    const Answer rules = {answer, given, finished.reached};
    const std::string action = request.action ? *request.action : "None";
    steps = rules.signals(request.tool, action);
    keep = std::max(std::size_t{1}, std::min(steps.size(), std::size_t{3}));
    const std::vector<JsonValue> usual = rules.usual(request.tool, action);
    steps.insert(steps.end(), usual.begin(), usual.end());
    drop_repeats(steps);
    if (steps.size() > 3) steps.resize(3);
  }
  fit(answer, steps, keep, finished.reached);
  if (!steps.empty()) answer.set("next_steps", JsonList(steps));
  return finished;
}

}  // namespace vantrex::tests::naive

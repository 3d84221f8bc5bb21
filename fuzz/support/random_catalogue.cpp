#include "fuzz/support/random_catalogue.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vantrex::fuzz {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// The fields that own kinds read; "enclosed" is an object in the answer and in hits.
constexpr std::array<std::string_view, 4> kOwnFields = {"identity", "fullname", "enclosed", "elements"};

bool is_own_field(std::string_view key) {
  return std::find(kOwnFields.begin(), kOwnFields.end(), key) != kOwnFields.end();
}

JsonValue field_path(Random& random) {
  if (random.chance(70)) return random.pick({"identity", "fullname"});
  return JsonList::of("enclosed", random.pick({"identity", "fullname"}));
}

JsonObject own_kind(Random& random) {
  JsonObject kind;
  for (int left = 3; left > 0; --left) {
    const char* source = random.pick({"answer", "hit", "request"});
    if (random.chance(50)) kind.set(source, field_path(random));
  }
  if (kind.empty()) kind.set("hit", "identity");
  if (random.chance(10)) kind.set("hit", JsonList());
  return kind;
}

JsonValue random_kind(Random& random) {
  return random.pick({"fqn", "path", "query", "component", "asked_fqn", "asked_query", "asked_path", "number",
                      "owner", "fqn", "number"});
}

JsonValue random_takes(Random& random) {
  if (random.chance(15)) return "changed_files";
  if (random.chance(30)) return random.pick({"fqn", "path", "query", "component", "number", "owner"});
  JsonObject takes;
  for (std::size_t left = random.below(3); left > 0; --left) {
    const JsonValue kind = random_kind(random);
    const char* name = random.pick({"first", "second", "third"});
    takes.set(name, random.chance(20) ? JsonList::of(kind) : kind);
  }
  return takes;
}

JsonObject random_call(Random& random, bool has_reason) {
  JsonObject call{{"tool", random.pick({"search", "symbol", "quality", "tests", "explore"})}};
  if (random.chance(60)) {
    call.set("args", JsonObject{{"constant", 1},
                                {"action", random.pick({"detail", "callers", "semantic", "impact"})}});
  }
  if (has_reason)
    call.set("reason", random.pick({"Why", "{hits} {hits}", "{hits", "See {x}"}) + random.text());
  return call;
}

std::string random_key(Random& random) {
  const std::string tool = random.pick({"search", "symbol", "file", "files", "tests", "git", "status"});
  return random.chance(30) ? tool
                           : tool + ":" + random.pick({"symbols", "code", "callers", "detail", "for_file"});
}

JsonValue random_signal(Random& random, const std::string& key) {
  if (random.chance(10) && key.find(':') != std::string::npos) return nullptr;
  JsonObject signal = random_call(random, true);
  signal.set(random.pick({"hits", "hits_at_least"}), random.pick({0, 0, 1, 8}));
  if (random.chance(70)) signal.set("takes", random_takes(random));
  return signal;
}

}  // namespace

JsonObject random_catalogue(Random& random) {
  JsonObject catalogue{{"arguments", JsonObject{{"number", own_kind(random)}, {"owner", own_kind(random)}}}};
  if (random.chance(50)) {
    catalogue.set("hit_lists",
                  JsonList::of("results", JsonList::of("enclosed", "elements"), "files", "symbols"));
  }
  if (random.chance(30)) catalogue.set("counts", JsonList::of(JsonList::of("enclosed", "identity"), "total"));
  JsonObject usual;
  for (std::size_t rows = random.below(8); rows > 0; --rows) {
    JsonList calls;
    for (std::size_t left = random.below(5); left > 0; --left) {
      JsonObject call = random_call(random, true);
      if (random.chance(80)) call.set("takes", random_takes(random));
      calls.push_back(call);
    }
    usual.set(random_key(random), calls);
  }
  catalogue.set("next_steps", usual);
  JsonObject signals;
  for (std::size_t rows = random.below(5); rows > 0; --rows) {
    const std::string key = random_key(random);
    signals.set(key, random_signal(random, key));
  }
  catalogue.set("signals", signals);
  return catalogue;
}

Request request_to_own_server(Random& random) {
  const auto value = [&random]() -> JsonValue {
    if (random.chance(20)) return random.value(1);
    return random.pick({"", "name", "other"}) + random.text();
  };
  Request request = random.request();
  request.answer.remove("next_steps");
  const std::string key = random_key(random);
  const std::size_t colon = key.find(':');
  request.tool = key.substr(0, colon);
  request.action = colon == std::string::npos ? std::nullopt : std::optional(key.substr(colon + 1));
  const auto decorate = [&](JsonObject& object) {
    if (random.chance(40)) object.set("identity", value());
    if (random.chance(40)) object.set("fullname", static_cast<int>(random.below(9)));
    if (random.chance(40)) object.set("enclosed", JsonObject{{"identity", value()}});
  };
  JsonList hits;
  for (std::size_t left = random.below(4); left > 0; --left) {
    JsonObject hit{{"fqn", "f"}};
    decorate(hit);
    hits.push_back(hit);
  }
  decorate(request.answer);
  if (random.chance(40)) request.answer.set("results", hits);
  if (random.chance(20))
    request.answer.set("enclosed", JsonObject{{"elements", hits}, {"identity", value()}});
  if (request.arguments) decorate(*request.arguments);
  return request;
}

Renaming::Renaming(Random& random) {
  for (std::size_t left = letters_.size(); left > 1; --left) {
    std::swap(letters_[left - 1], letters_[random.below(left)]);
  }
}

std::string Renaming::name(std::string_view text) const {
  std::string renamed(text);
  for (char& letter : renamed) {
    if (letter >= 'a' && letter <= 'z') letter = letters_[static_cast<std::size_t>(letter - 'a')];
  }
  return renamed;
}

// "action" names the action of every call, and the two others come with the kind "changed_files".
std::string Renaming::argument(std::string_view text) const {
  const bool stays = text == "action" || text == "changed_files" || text == "base_branch";
  return stays ? std::string(text) : name(text);
}

JsonValue Renaming::fields(const JsonValue& value) const {
  if (const JsonList* list = value.list()) {
    JsonList renamed;
    for (const JsonValue& item : *list) renamed.push_back(fields(item));
    return renamed;
  }
  return value.object() == nullptr ? value : fields(*value.object());
}

JsonObject Renaming::fields(const JsonObject& object) const {
  JsonObject renamed;
  for (const auto& [key, member] : object) {
    renamed.set(is_own_field(key.view()) ? name(key.view()) : std::string(key.view()), fields(member));
  }
  return renamed;
}

JsonValue Renaming::path(const JsonValue& keys) const {
  if (const JsonList* list = keys.list()) {
    JsonList renamed;
    for (const JsonValue& key : *list) renamed.push_back(path(key));
    return renamed;
  }
  return is_own_field(*keys.string()) ? JsonValue(name(*keys.string())) : keys;
}

JsonObject Renaming::arguments(const JsonObject& args) const {
  JsonObject renamed;
  for (const auto& [key, value] : args) {
    const bool is_action = key.view() == "action" && value.string();
    renamed.set(argument(key.view()), is_action ? JsonValue(name(*value.string())) : value);
  }
  return renamed;
}

JsonObject Renaming::call(const JsonObject& call) const {
  JsonObject renamed = call;
  renamed.set("tool", name(*call["tool"].string()));
  if (const JsonObject* args = call["args"].object()) renamed.set("args", arguments(*args));
  const JsonValue& takes = call["takes"];
  if (takes.string() && takes.string() != "changed_files") {
    renamed.set("takes", JsonObject{{name(*takes.string()), takes}});
  } else if (const JsonObject* named = takes.object()) {
    JsonObject kinds;
    for (const auto& [key, kind] : *named) kinds.set(name(key.view()), kind);
    renamed.set("takes", kinds);
  }
  return renamed;
}

JsonObject Renaming::catalogue(const JsonObject& catalogue) const {
  JsonObject renamed = catalogue;
  for (const char* member : {"hit_lists", "counts"}) {
    if (catalogue.contains(member)) renamed.set(member, path(catalogue[member]));
  }
  JsonObject kinds;
  for (const auto& [kind, sources] : *catalogue["arguments"].object()) {
    JsonObject paths;
    for (const auto& [source, keys] : *sources.object()) paths.set(source.view(), path(keys));
    kinds.set(kind.view(), paths);
  }
  renamed.set("arguments", kinds);
  JsonObject usual;
  for (const auto& [key, calls] : *catalogue["next_steps"].object()) {
    JsonList row;
    for (const JsonValue& each : *calls.list()) row.push_back(call(*each.object()));
    usual.set(name(key.view()), row);
  }
  renamed.set("next_steps", usual);
  JsonObject signals;
  for (const auto& [key, signal] : *catalogue["signals"].object()) {
    signals.set(name(key.view()), signal.is_null() ? signal : JsonValue(call(*signal.object())));
  }
  renamed.set("signals", signals);
  return renamed;
}

Request Renaming::request(const Request& request) const {
  Request renamed = request;
  renamed.answer = fields(request.answer);
  renamed.tool = name(request.tool);
  if (request.action) renamed.action = name(*request.action);
  if (request.arguments) renamed.arguments = fields(*request.arguments);
  if (request.serves) {
    renamed.serves = Served{};
    for (const std::string& each : request.serves->names) {
      const std::string served = name(each);
      const std::size_t colon = served.find(':');
      renamed.serves->names.push_back(served);
      if (colon == std::string::npos) renamed.serves->set.add({served});
      if (colon != std::string::npos)
        renamed.serves->set.add({served.substr(0, colon), served.substr(colon + 1)});
    }
  }
  return renamed;
}

JsonObject Renaming::finished(const JsonObject& answer) const {
  JsonObject renamed = fields(answer);
  const JsonList* steps = answer["next_steps"].list();
  if (steps == nullptr) return renamed;
  JsonList all;
  for (const JsonValue& each : *steps) all.push_back(call(*each.object()));
  renamed.set("next_steps", all);
  return renamed;
}

}  // namespace vantrex::fuzz

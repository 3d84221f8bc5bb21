#include "fuzz/support/random_tree.h"

#include <cstdlib>
#include <limits>
#include <string_view>

#include "vantrex/tool_handlers/next_steps/signals.h"
#include "vantrex/values/integer.h"

namespace vantrex::fuzz {

using tool_handlers::next_steps::_SIGNALS;
using values::ForeignValue;
using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

// One character: one that JSON may escape, or a UTF-8 sequence with a random lead byte.
std::string Random::character() {
  if (chance(50))
    return pick<std::string>({"\"", "\\", "\x7f", "/", std::string(1, static_cast<char>(below(0x20)))});
  const std::size_t lead = 0xC2 + below(0xF5 - 0xC2);
  const std::size_t low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  const std::size_t high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  std::string bytes = {static_cast<char>(lead), static_cast<char>(low + below(high - low + 1))};
  bytes.resize(lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4, pick({'\x80', '\xBF'}));
  return bytes;
}

std::string Random::text() {
  std::string text;
  for (std::size_t left = below(5); left > 0; --left) {
    text += std::string(chance(5) ? 64 + below(64) : below(18), 'a');
    text += character();
  }
  return text + std::string(below(8), 'z');
}

std::string Random::name() {
  if (chance(20)) return text();
  if (chance(10)) return pick({"a name of 14 b", "a name of 15 by", "next_steps_and_what_follows"});
  return pick({"note", "tip", "tips", "hint", "hints", "notes", "next_steps", "Note", "a", "b", "path", "fqn",
               "name", "kind", "tool", "args", "reason", "line"});
}

std::string Random::path() {
  return chance(10) ? text() : "dir/" + std::to_string(below(30)) + ".py";
}

JsonValue Random::number() {
  const double infinity = std::numeric_limits<double>::infinity();
  switch (below(domain_ == Domain::any ? 7 : 6)) {
    case 0:
      return *Integer::parse(
          pick({"9223372036854775808", "-9223372036854775809", "-1234567890123456789012"}));
    case 1:
      return pick({std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()});
    case 2:
      return pick({0.0, -0.0, 1.0, 1e15, 1e16, 9.9e-5, 1e-4, 2.5, 5e-324, 1.0 / 3, 1.79e308});
    case 3:
      return decimal();
    case 6:
      return pick({infinity, -infinity, std::numeric_limits<double>::quiet_NaN()});
    default:
      return static_cast<int>(below(25)) - 5;
  }
}

// A float of 3 to 13 digits, fewer when the last ones are zeros.
double Random::decimal() {
  std::string digits = std::to_string(100 + below(900));
  for (int part = 0; part < 2; ++part) digits += std::to_string(10000 + below(50000));
  digits.resize(3 + below(11));
  const std::string exponent = std::to_string(static_cast<int>(below(40)) - 25);
  const double magnitude = std::strtod((digits + "e" + exponent).c_str(), nullptr);
  return chance(30) ? -magnitude : magnitude;
}

// An empty object or, rarely, one with enough fields to be indexed, whose keys are shorter and longer than
// the inline limit of 14 bytes.
JsonObject Random::empty_or_wide() {
  JsonObject object;
  for (std::size_t left = chance(3) ? 33 + below(8) : 0; left > 0; --left) {
    object.set(std::string(left % 20, 'k') + std::to_string(left), value(0));
  }
  return object;
}

JsonObject Random::fields(std::size_t depth) {
  JsonObject object = empty_or_wide();
  for (std::size_t left = below(5); left > 0; --left) {
    const std::string key = name();
    object.set(key, value(depth - 1));
  }
  return object;
}

// An object with nested hint fields, which may be larger than the room for hints.
JsonObject Random::hint_block() {
  JsonObject nested = fields(1);
  nested.set("note", std::string(below(800), 'h'));
  nested.set("tips", text());
  JsonObject block = {{"state", name()}};
  block.set(pick({"index", "hints"}), JsonList::of(1, nested));
  return block;
}

JsonValue Random::value(std::size_t depth) {
  switch (below(depth > 0 ? 12 : 7)) {
    case 0:
      return nullptr;
    case 1:
      return chance(50);
    case 2:
    case 3:
      return number();
    case 4:
      return chance(20) ? "" : name();
    case 5:
      return text();
    case 6:
      if (domain_ == Domain::any) return ForeignValue::of(0, name());
      return std::string(20 + below(30), 'l');
    case 7:
    case 8: {
      JsonList list;
      for (std::size_t left = below(5); left > 0; --left) list.push_back(value(depth - 1));
      return list;
    }
    default:
      return fields(depth);
  }
}

// A value for a field that should hold a name or a query.
JsonValue Random::phrase() {
  if (chance(20)) return value(2);
  if (chance(15)) return pick({"", "pkg.mod.parse", "Größe \"x\""});
  return std::string(chance(20) ? 40 + below(200) : 8, 'q');
}

JsonValue Random::hit() {
  if (chance(25)) return path();
  if (chance(10)) return value(2);
  JsonObject hit;
  if (chance(60)) hit.set("fqn", phrase());
  if (chance(60)) hit.set("path", chance(80) ? JsonValue(path()) : JsonValue(7));
  if (chance(40)) hit.set("name", phrase());
  if (chance(30)) hit.set("kind", pick({"function", "Heading", "key", "class", "document", ""}));
  if (chance(30)) hit.set("file", pick({"a.py", "README.MD", "x.json", "md", "c.lock"}));
  if (chance(20)) hit.set("note", value(2));
  return hit;
}

JsonList Random::own_steps() {
  JsonList steps;
  for (std::size_t left = below(6); left > 0; --left) {
    steps.push_back(JsonObject{{"tool", "t"}, {"args", fields(2)}, {"reason", std::string(below(150), 'r')}});
  }
  return steps;
}

JsonValue Random::field_value(std::string_view key) {
  if (chance(20)) return value(2);
  if (key == "total_count" || key == "total") return pick({0, 0, 1, 7, 8, 9, 12, -1});
  if (key == "file" || key == "path") return path();
  if (key == "fqn" || key == "query" || key == "base_branch") return phrase();
  if (key == "next_steps") return own_steps();
  if (key == "text") return std::string(below(5000), 't');
  if (key == "note" || key == "files_omitted") return value(3);
  if (key == "freshness") return hint_block();
  JsonList hits;
  for (int left = pick({0, 0, 1, 3, 7, 8, 11, 24}); left > 0; --left) hits.push_back(hit());
  return hits;
}

JsonObject Random::named_fields(std::size_t count, std::initializer_list<const char*> keys) {
  JsonObject object = empty_or_wide();
  for (; count > 0; --count) {
    const char* key = pick(keys);
    object.set(key, field_value(key));
  }
  return object;
}

// About half of the calls that the tables make, and some that no table makes.
Served Random::served() {
  Served served;
  for (const std::string tool :
       {"search", "symbol", "file", "tests", "explore", "quality", "architecture", "context"}) {
    for (const char* action : {"semantic", "detail", "", "callers", "references", "symbols", "imports",
                               "for_file", "recommended", "impact", "components", "dependencies", "delta"}) {
      const bool is_whole = *action == '\0';
      if (!chance(is_whole ? 20 : 40)) continue;
      served.names.push_back(is_whole ? tool : tool + ":" + action);
      served.set.add({tool, is_whole ? nullptr : action});
    }
  }
  return served;
}

Request Random::request() {
  Request request;
  request.answer = named_fields(
      below(9), {"total_count", "total",     "symbols",        "results",       "matches",     "definitions",
                 "callers",     "fqn",       "files",          "dead_symbols",  "tests",       "components",
                 "references",  "file",      "query",          "path",          "base_branch", "note",
                 "text",        "freshness", "affected_files", "files_omitted", "next_steps"});
  request.tool = pick({"search", "symbol", "file", "files", "tests", "git", "quality", "architecture",
                       "context", "status", "other", "symbol:callers"});
  request.action =
      pick({"symbols", "code", "definition", "semantic", "detail", "callers", "references", "for_file",
            "imports", "related", "hotspots", "circular_deps", "duplicates", "impact", "None", ""});
  if (chance(20)) request.action.reset();
  if (chance(20)) {
    const std::string_view key = _SIGNALS[below(_SIGNALS.size())].key;
    request.tool = key.substr(0, key.find(':'));
    request.action = key.substr(key.find(':') + 1);
  }
  if (chance(80)) request.arguments = named_fields(below(5), {"query", "fqn", "path"});
  if (chance(20)) request.freshness = chance(50) ? hint_block() : fields(2);
  if (chance(40)) request.serves = served();
  return request;
}

}  // namespace vantrex::fuzz

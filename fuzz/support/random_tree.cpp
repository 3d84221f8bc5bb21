#include "fuzz/support/random_tree.h"

#include <limits>
#include <string_view>

#include "vantrex/values/integer.h"

namespace vantrex::fuzz {

using values::ForeignValue;
using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

std::string Random::text() {
  std::string text;
  for (std::size_t left = below(20); left > 0; --left) {
    text += pick(
        {"a", "\"", "\\", "\n", "\t", "\b", "\f", "\r", "\x01", "\x1f", "\x7f", "/", "é", "\u2028", "𝄞"});
  }
  return text;
}

std::string Random::long_text() {
  return std::string(4095 + below(3), 'x');
}

std::string Random::name() {
  if (chance(20)) return chance(3) ? long_text() : text();
  return pick({"note", "tip", "tips", "hint", "hints", "notes", "next_steps", "Note", "a", "b", "path", "fqn",
               "name", "kind", "tool", "args", "reason", "line"});
}

std::string Random::path() {
  return chance(10) ? text() : "dir/" + std::to_string(below(14)) + ".py";
}

JsonValue Random::number() {
  const double infinity = std::numeric_limits<double>::infinity();
  switch (below(domain_ == Domain::any ? 6 : 5)) {
    case 0:
      return *Integer::parse(
          pick({"9223372036854775808", "-9223372036854775809", "-1234567890123456789012"}));
    case 1:
      return pick({std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()});
    case 2:
      return pick({0.0, -0.0, 1.0, 1e15, 1e16, 9.9e-5, 1e-4, 2.5, 5e-324, 1.0 / 3, 1.79e308});
    case 5:
      return pick({infinity, -infinity, std::numeric_limits<double>::quiet_NaN()});
    default:
      return static_cast<int>(below(25)) - 5;
  }
}

JsonList Random::list(std::size_t depth) {
  JsonList list;
  for (std::size_t left = below(5); left > 0; --left) list.push_back(value(depth - 1));
  return list;
}

JsonObject Random::fields(std::size_t depth) {
  JsonObject object;
  // Now and then more fields than are searched without an index.
  for (std::size_t left = chance(3) ? 40 : below(5); left > 0; --left) {
    const std::string key = left > 5 ? std::to_string(left) : name();
    object.set(key, value(depth - 1));
  }
  return object;
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
      if (chance(3)) return long_text();
      return chance(20) ? "" : name();
    case 5:
      return text();
    case 6:
      if (domain_ == Domain::any) return ForeignValue::of(0, name());
      return std::string(20 + below(30), 'l');
    case 7:
    case 8:
      return list(depth);
    default:
      return fields(depth);
  }
}

// What stands where a name or a query is expected.
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

JsonList Random::hits() {
  JsonList hits;
  for (int left = pick({0, 0, 1, 3, 7, 8, 11, 16}); left > 0; --left) hits.push_back(hit());
  return hits;
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
  if (key == "note" || key == "files_omitted" || key == "freshness") return value(3);
  return hits();
}

JsonObject Random::named_fields(std::size_t count, std::initializer_list<const char*> keys) {
  JsonObject object;
  for (; count > 0; --count) {
    const char* key = pick(keys);
    object.set(key, field_value(key));
  }
  return object;
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
  if (request.action == "for_file" || chance(10)) request.tool = "tests";
  if (chance(80)) request.arguments = named_fields(below(5), {"query", "fqn", "path"});
  if (chance(20)) request.freshness = fields(2);
  return request;
}

}  // namespace vantrex::fuzz

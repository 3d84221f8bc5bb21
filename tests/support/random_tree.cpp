#include "support/random_tree.h"

#include <array>
#include <limits>
#include <string_view>

#include "vantrex/values/integer.h"

namespace vantrex::tests {

using values::ForeignValue;
using values::Integer;
using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

using Names = std::initializer_list<std::string_view>;

std::string_view one_of(Random& random, Names names) {
  return names.begin()[random.below(names.size())];
}

JsonValue random_integer(Random& random) {
  switch (random.below(4)) {
    case 0:
      return *Integer::parse(one_of(random, {"9223372036854775808", "-9223372036854775809",
                                             "123456789012345678901234567890", "-100000000000000000000"}));
    case 1:
      return random.chance(50) ? std::numeric_limits<std::int64_t>::max()
                               : std::numeric_limits<std::int64_t>::min();
    default:
      return static_cast<int>(random.below(25)) - 5;
  }
}

JsonValue random_float(Random& random, Domain domain) {
  constexpr std::array<double, 12> kEdges = {
      0.0, -0.0, 1.0, 1e15, 1e16, 9.9e-5, 1e-4, 2.5, 5e-324, 5.684341886080802e-14, 1.0 / 3, 1.79e308};
  if (domain == Domain::any && random.chance(20)) {
    const double infinity = std::numeric_limits<double>::infinity();
    return random.pick(std::array{infinity, -infinity, std::numeric_limits<double>::quiet_NaN()});
  }
  return random.pick(kEdges);
}

std::string random_name(Random& random) {
  if (random.chance(20)) return random_string(random);
  return std::string(
      one_of(random, {"note", "tip", "tips", "hint", "hints", "notes", "next_steps", "Note", "a", "b", "path",
                      "fqn", "name", "kind", "tool", "args", "reason", "line"}));
}

JsonObject random_fields(Random& random, Domain domain, std::size_t depth) {
  JsonObject object;
  // Now and then more fields than are searched without an index.
  for (std::size_t left = random.chance(3) ? 40 : random.below(5); left > 0; --left) {
    object.set(left > 5 ? std::to_string(left) : random_name(random),
               random_value(random, domain, depth - 1));
  }
  return object;
}

std::string random_path(Random& random) {
  return random.chance(10) ? random_string(random) : "dir/" + std::to_string(random.below(14)) + ".py";
}

JsonValue random_text_or_any(Random& random, Domain domain) {
  if (random.chance(20)) return random_value(random, domain, 2);
  if (random.chance(15)) return std::string(one_of(random, {"", "pkg.mod.parse", "Größe \"x\""}));
  return std::string(random.chance(20) ? 40 + random.below(200) : 8, 'q');
}

JsonValue random_hit(Random& random, Domain domain) {
  if (random.chance(25)) return random_path(random);
  if (random.chance(10)) return random_value(random, domain, 2);
  JsonObject hit;
  if (random.chance(60)) hit.set("fqn", random_text_or_any(random, domain));
  if (random.chance(60)) hit.set("path", random.chance(80) ? JsonValue(random_path(random)) : JsonValue(7));
  if (random.chance(40)) hit.set("name", random_text_or_any(random, domain));
  if (random.chance(30)) {
    hit.set("kind", one_of(random, {"function", "Heading", "key", "class", "document", ""}));
  }
  if (random.chance(30)) hit.set("file", one_of(random, {"a.py", "README.MD", "x.json", "md", "c.lock"}));
  if (random.chance(20)) hit.set(random_name(random), random_value(random, domain, 2));
  return hit;
}

JsonValue random_hits(Random& random, Domain domain) {
  if (random.chance(10)) return random_value(random, domain, 2);
  constexpr std::array<std::size_t, 8> kSizes = {0, 0, 1, 3, 7, 8, 11, 16};
  JsonList hits;
  for (std::size_t left = random.pick(kSizes); left > 0; --left) hits.push_back(random_hit(random, domain));
  return hits;
}

JsonValue random_own_steps(Random& random, Domain domain) {
  if (random.chance(30)) return random_value(random, domain, 2);
  JsonList steps;
  for (std::size_t left = random.below(6); left > 0; --left) {
    steps.push_back(JsonObject{{"tool", one_of(random, {"search", "file"})},
                               {"args", random_fields(random, domain, 2)},
                               {"reason", std::string(random.below(150), 'r')}});
  }
  return steps;
}

JsonValue random_field_value(Random& random, Domain domain, std::string_view name) {
  if (name == "total_count" || name == "total") {
    constexpr std::array<int, 8> kCounts = {0, 0, 1, 7, 8, 9, 12, -1};
    return random.chance(70) ? JsonValue(random.pick(kCounts)) : random_value(random, domain, 1);
  }
  if (name == "file" || name == "path") {
    return random.chance(80) ? JsonValue(random_path(random)) : random_value(random, domain, 2);
  }
  if (name == "fqn" || name == "query" || name == "base_branch") return random_text_or_any(random, domain);
  if (name == "next_steps") return random_own_steps(random, domain);
  if (name == "affected_files" || name == "symbols" || name == "results" || name == "matches" ||
      name == "definitions" || name == "callers" || name == "references" || name == "dead_symbols" ||
      name == "files" || name == "tests" || name == "components") {
    return random_hits(random, domain);
  }
  if (name == "text") return std::string(random.below(4000), 't');
  return random_value(random, domain, 3);
}

JsonObject random_named_fields(Random& random, Domain domain, Names names, std::size_t count) {
  JsonObject object;
  for (; count > 0; --count) {
    const std::string_view name = one_of(random, names);
    object.set(name, random.chance(5) ? JsonValue() : random_field_value(random, domain, name));
  }
  return object;
}

}  // namespace

std::string random_string(Random& random) {
  std::string text;
  for (std::size_t left = random.below(20); left > 0; --left) {
    text += one_of(random, {"a", "\"", "\\", "\n", "\t", "\b", "\f", "\r", "\x01", "\x1f", "\x7f", "/", "é",
                            "\u2028", "𝄞", "plain"});
  }
  return text;
}

JsonValue random_value(Random& random, Domain domain, std::size_t depth) {
  switch (random.below(depth > 0 ? 12 : 7)) {
    case 0:
      return nullptr;
    case 1:
      return random.chance(50);
    case 2:
      return random_integer(random);
    case 3:
      return random_float(random, domain);
    case 4:
      return random.chance(20) ? "" : random_name(random);
    case 5:
      return random_string(random);
    case 6:
      if (domain == Domain::any) return ForeignValue::of(random.below(9), random_name(random));
      return std::string(20 + random.below(30), 'l');
    case 7:
    case 8: {
      JsonList list;
      for (std::size_t left = random.below(5); left > 0; --left) {
        list.push_back(random_value(random, domain, depth - 1));
      }
      return list;
    }
    default:
      return random_fields(random, domain, depth);
  }
}

Request random_request(Random& random, Domain domain) {
  constexpr std::string_view kTools[] = {"search",  "search", "symbol", "symbol",        "file",
                                         "files",   "tests",  "git",    "quality",       "architecture",
                                         "context", "status", "other",  "symbol:callers"};
  constexpr std::string_view kActions[] = {
      "symbols", "code",    "definition", "semantic",      "detail",     "callers", "references", "for_file",
      "imports", "related", "hotspots",   "circular_deps", "duplicates", "impact",  "None",       ""};
  Request request;
  request.answer = random_named_fields(
      random, domain,
      {"total_count",   "total",          "symbols",    "results",      "matches",     "definitions",
       "callers",       "references",     "files",      "dead_symbols", "tests",       "components",
       "fqn",           "file",           "query",      "path",         "base_branch", "note",
       "files_omitted", "affected_files", "next_steps", "text",         "freshness",   "tip"},
      random.below(9));
  request.tool = random.pick(kTools);
  if (random.chance(80)) request.action = random.pick(kActions);
  if (random.chance(80)) {
    request.arguments =
        random_named_fields(random, domain, {"query", "fqn", "path", "action"}, random.below(4));
  }
  if (random.chance(20)) request.freshness = random_fields(random, domain, 2);
  return request;
}

}  // namespace vantrex::tests

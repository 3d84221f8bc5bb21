#include "answers.h"

#include <cmath>
#include <cstdint>
#include <utility>

#include "words.h"

namespace vantrex::bench {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// A hit of the symbol tools: a symbol with its place.
JsonObject symbol_row(Random& random) {
  const std::string name = function_name(random);
  const std::string owner = class_name(random);
  const std::string_view module = noun(random);
  return JsonObject{{"fqn", joined({"acme.", module, ".", owner, ".", name})},
                    {"name", name},
                    {"kind", symbol_kind(random)},
                    {"file", joined({"src/acme/", module, ".py"})},
                    {"line", 1 + random.below(900)}};
}

// The score of a hit as the search tool gives it: four places.
JsonValue hit_score(Random& random, Floats floats) {
  const double tenthousandths = std::round(random.fraction() * 10000);
  if (floats == Floats::round) return static_cast<std::int64_t>(tenthousandths);
  return tenthousandths / 10000;
}

JsonObject file_row(Random& random, std::size_t number) {
  return JsonObject{
      {"path", joined({"src/acme/", noun(random), "/", noun(random), "_", std::to_string(number), ".py"})},
      {"language", "python"},
      {"lines", 10 + random.below(2000)},
      {"symbols", random.below(120)},
      {"summary", random.one_in(10) ? JsonValue(sentence(random)) : JsonValue(nullptr)}};
}

JsonObject method_node(Random& random) {
  const std::string name = function_name(random);
  const bool documented = random.one_in(2);
  return JsonObject{{"name", name},
                    {"kind", "method"},
                    {"signature", signature(random, name)},
                    {"line", 1 + random.below(4000)},
                    {"end_line", 1 + random.below(4000)},
                    {"is_async", random.one_in(6)},
                    {"complexity", 1 + random.below(30)},
                    {"doc", documented ? JsonValue(prose(random, 1 + random.below(3))) : JsonValue(nullptr)},
                    {"returns", type_name(random)},
                    {"decorators", JsonList()},
                    {"deprecated", random.one_in(2) ? JsonValue(false) : JsonValue(nullptr)}};
}

JsonObject class_node(Random& random) {
  JsonList methods;
  for (std::size_t count = 3 + random.below(12); count > 0; --count) methods.push_back(method_node(random));
  return JsonObject{{"name", class_name(random)},
                    {"bases", JsonList::of(class_name(random))},
                    {"line", 1 + random.below(900)},
                    {"doc", prose(random, 2)},
                    {"note", random.one_in(20) ? JsonValue("Generated code") : JsonValue(nullptr)},
                    {"methods", std::move(methods)}};
}

JsonObject module_node(Random& random) {
  JsonList classes;
  for (std::size_t count = 1 + random.below(8); count > 0; --count) classes.push_back(class_node(random));
  return JsonObject{{"path", file_path(random)},
                    {"language", "python"},
                    {"owner", nullptr},
                    {"classes", std::move(classes)}};
}

constexpr PlannedStep kReferences{"symbol", "references", "fqn", "", "Every use of it"};
constexpr PlannedStep kCallers{"symbol", "callers", "fqn", "", "Who calls the best hit"};

}  // namespace

Request symbol_request(std::string name, JsonObject answer) {
  return {std::move(name), std::move(answer), "symbol", std::nullopt, {}, {kReferences, kCallers}};
}

Request rows_request(std::string name, std::size_t count) {
  Random random(4);
  JsonList rows;
  for (std::size_t number = 0; number < count; ++number) rows.push_back(file_row(random, number));
  JsonObject answer{{"fqn", "acme"}, {"total_count", count}, {"files", std::move(rows)}};
  return {std::move(name),
          std::move(answer),
          "file",
          std::nullopt,
          {},
          {PlannedStep{"symbol", "detail", "fqn", "", "Details of the best hit"},
           PlannedStep{"file", "imports", "path", "files", "What it imports"}}};
}

Request detail_request() {
  Random random(1);
  JsonList parameters;
  parameters.push_back(JsonObject{{"name", "self"}, {"type", nullptr}, {"default", nullptr}});
  parameters.push_back(JsonObject{{"name", "force"}, {"type", "bool"}, {"default", "False"}});
  parameters.push_back(JsonObject{{"name", "timeout"}, {"type", "float | None"}, {"default", "None"}});
  JsonObject answer{
      {"fqn", "acme.storage.SegmentWriter.flush"},
      {"name", "flush"},
      {"kind", "method"},
      {"file", "src/acme/storage/segment_writer.py"},
      {"line", 214},
      {"end_line", 251},
      {"language", "python"},
      {"visibility", "public"},
      {"signature", "def flush(self, force: bool = False, timeout: float | None = None) -> int"},
      {"doc", prose(random, 7)},
      {"parameters", std::move(parameters)},
      {"returns", "int"},
      {"decorators", JsonList::of("override")},
      {"parent", "acme.storage.SegmentWriter"},
      {"overrides", nullptr},
      {"is_async", false},
      {"is_abstract", nullptr},
      {"deprecated", nullptr},
      {"complexity", 7},
      {"callers_count", 12},
      {"coverage", JsonObject{{"lines", nullptr}}},
      {"note", nullptr}};
  return symbol_request("detail", std::move(answer));
}

Request callers_request() {
  Random random(2);
  const std::string fqn = "acme.storage.SegmentWriter.flush";
  JsonList callers;
  for (int count = 0; count < 12; ++count) {
    JsonObject row = symbol_row(random);
    row.set("context", code(random, 40 + random.below(40)));
    row.set("is_test", random.one_in(4) ? JsonValue(true) : JsonValue(nullptr));
    callers.push_back(std::move(row));
  }
  JsonObject answer{{"fqn", fqn}, {"callers", std::move(callers)}, {"total_count", 12}, {"note", nullptr}};
  return {
      "callers",
      std::move(answer),
      "symbol",
      "callers",
      JsonObject{{"fqn", fqn}},
      {PlannedStep{"quality", "impact", "fqn", "", " callers: check the blast radius", true}, kReferences}};
}

Request search_request(Floats floats) {
  Random random(3);
  JsonList results;
  for (int count = 0; count < 50; ++count) {
    JsonObject row = symbol_row(random);
    row.set("score", hit_score(random, floats));
    row.set("snippet", code(random, 200));
    row.set("doc", random.one_in(4) ? JsonValue(nullptr) : JsonValue(prose(random, 4 + random.below(4))));
    row.set("deprecated", nullptr);
    results.push_back(std::move(row));
  }
  JsonObject answer{{"query", "flush pending segments"},
                    {"results", std::move(results)},
                    {"total_count", 50},
                    {"truncated", nullptr},
                    {"tip", "Quote a name to match it exactly."}};
  return {"search",
          std::move(answer),
          "search",
          "symbols",
          JsonObject{{"query", "flush pending segments"}},
          {PlannedStep{"symbol", "detail", "fqn", "results", "Details of the best hit"},
           PlannedStep{"symbol", "callers", "fqn", "results", "Who calls the best hit"}}};
}

Request files_request() {
  return rows_request("files", 20000);
}

Request huge_request() {
  Random random(5);
  JsonList modules;
  for (int count = 0; count < 2440; ++count) modules.push_back(module_node(random));
  JsonObject answer{{"fqn", "acme"}, {"modules", std::move(modules)}};
  return symbol_request("huge", std::move(answer));
}

Request floats_request(Floats floats) {
  Random random(6);
  JsonList scores;
  for (int count = 0; count < 100000; ++count) {
    const double score = random.fraction();
    scores.push_back(floats == Floats::keep ? JsonValue(score) : JsonValue(std::lround(score * 1e9)));
  }
  JsonObject answer{{"fqn", "acme.storage"}, {"metric", "cosine"}, {"scores", std::move(scores)}};
  return symbol_request("floats", std::move(answer));
}

}  // namespace vantrex::bench

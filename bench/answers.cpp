#include "answers.h"

#include <cmath>
#include <cstdint>
#include <random>
#include <utility>

namespace vantrex::bench {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

constexpr std::array<std::string_view, 24> kNouns = {
    "segment", "index",  "symbol", "query",   "token", "reader", "cache",   "graph",
    "module",  "parser", "scope",  "writer",  "edge",  "node",   "ranking", "snapshot",
    "commit",  "branch", "policy", "session", "range", "chunk",  "storage", "embedding"};
constexpr std::array<std::string_view, 16> kVerbs = {"flush", "load",  "resolve", "merge", "open",  "visit",
                                                     "rank",  "parse", "collect", "find",  "apply", "close",
                                                     "build", "write", "refresh", "split"};
constexpr std::array<std::string_view, 8> kTypes = {"int",          "str",  "bool",      "Path",
                                                    "float | None", "None", "list[str]", "dict[str, Any]"};
constexpr std::array<std::string_view, 4> kKinds = {"method", "function", "class", "property"};
constexpr std::array<std::string_view, 12> kSentences = {
    "Writes what is pending and waits until it is on disk.",
    "Returns the number of entries that were kept.",
    "Callers hold the lock; nothing here blocks.",
    "Raises KeyError when the name is unknown.",
    "The result is sorted by score, best first.",
    "Only the first match of every file counts.",
    "An empty range means \"everything\".",
    "See also the reader of the same format.",
    "Paths use forward slashes (src/app.py), on every platform.",
    "Gibt die Größe in Bytes zurück, für jede Datei.",
    "Vérifie l’état du dépôt — naïvement.",
    "索引を更新します。"};
constexpr std::array<std::string_view, 8> kCodeLines = {
    "if not self._pending:\n\treturn 0\n",
    "for entry in self._entries:\n\tif entry.name == \"main\":\n",
    "\t\tlog.debug(\"kept %s of %d\", entry.name, total)\n",
    "\twith self._lock:\n\t\tself._cache.clear()\n",
    "return [symbol for symbol in found if symbol.kind != \"key\"]\n",
    "raise ValueError(f\"no such branch: {name!r}\")\n",
    "self._writer.write(chunk)\nself._size += len(chunk)\n",
    "\tpattern = re.compile(r\"\\w+\\.py$\")\n"};

// The same numbers on every machine.
class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}

  std::size_t below(std::size_t bound) { return engine_() % bound; }
  bool one_in(std::size_t count) { return below(count) == 0; }
  double fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
  template <std::size_t kCount>
  std::string_view pick(const std::array<std::string_view, kCount>& texts) {
    return texts[below(kCount)];
  }

 private:
  std::mt19937_64 engine_;
};

std::string joined(std::initializer_list<std::string_view> texts) {
  std::string all;
  for (const std::string_view text : texts) all += text;
  return all;
}

std::string capitalised(std::string_view word) {
  std::string text(word);
  text.front() = static_cast<char>(text.front() - 'a' + 'A');
  return text;
}

std::string function_name(Random& random) {
  std::string name = joined({random.pick(kVerbs), "_", random.pick(kNouns)});
  if (random.one_in(3)) name += joined({"_", random.pick(kNouns)});
  return name;
}

std::string class_name(Random& random) {
  return capitalised(random.pick(kNouns)) + capitalised(random.pick(kNouns));
}

std::string file_path(Random& random) {
  return joined({"src/acme/", random.pick(kNouns), "/", random.pick(kNouns), "_", random.pick(kNouns),
                 random.one_in(8) ? ".md" : ".py"});
}

std::string prose(Random& random, std::size_t sentences) {
  std::string text;
  for (std::size_t count = 0; count < sentences; ++count) {
    if (count > 0) text += count % 3 == 0 ? "\n\n" : " ";
    text += random.pick(kSentences);
  }
  return text;
}

std::string code(Random& random, std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) text += random.pick(kCodeLines);
  text.resize(bytes);
  return text;
}

std::string signature(Random& random, std::string_view name) {
  return joined({"def ", name, "(self, ", random.pick(kNouns), ": ", random.pick(kTypes), ", ",
                 random.pick(kVerbs), ": bool = False) -> ", random.pick(kTypes)});
}

// A hit of the symbol tools: a symbol with its place.
JsonObject symbol_row(Random& random) {
  const std::string name = function_name(random);
  const std::string owner = class_name(random);
  const std::string_view module = random.pick(kNouns);
  return JsonObject{{"fqn", joined({"acme.", module, ".", owner, ".", name})},
                    {"name", name},
                    {"kind", random.pick(kKinds)},
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
  return JsonObject{{"path", joined({"src/acme/", random.pick(kNouns), "/", random.pick(kNouns), "_",
                                     std::to_string(number), ".py"})},
                    {"language", "python"},
                    {"lines", 10 + random.below(2000)},
                    {"symbols", random.below(120)},
                    {"summary", random.one_in(10) ? JsonValue(random.pick(kSentences)) : JsonValue(nullptr)}};
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
                    {"returns", random.pick(kTypes)},
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

// An answer about one symbol, with the symbol's usual steps.
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

}  // namespace

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

std::vector<Request> all_requests(Floats floats) {
  std::vector<Request> requests;
  requests.push_back(detail_request());
  requests.push_back(callers_request());
  requests.push_back(search_request(floats));
  requests.push_back(files_request());
  requests.push_back(huge_request());
  requests.push_back(floats_request(floats));
  return requests;
}

Request flat_request(std::size_t bytes) {
  constexpr std::size_t kRowBytes = 107;
  return rows_request("flat", bytes / kRowBytes);
}

Request long_texts_request() {
  Random random(8);
  JsonList files;
  for (std::size_t number = 0; number < 10; ++number) {
    JsonObject row = file_row(random, number);
    row.set("text", code(random, 8000));
    files.push_back(std::move(row));
  }
  JsonObject answer{{"fqn", "acme"}, {"files", std::move(files)}};
  return symbol_request("long texts", std::move(answer));
}

Request own_steps_request(std::size_t count) {
  Random random(7);
  JsonList steps;
  for (std::size_t number = 0; number < count; ++number) {
    steps.push_back(JsonObject{
        {"tool", "symbol"},
        {"args", JsonObject{{"action", "detail"}, {"fqn", "acme.storage." + function_name(random)}}},
        {"reason", "Next on the route"}});
  }
  JsonObject answer{{"fqn", "acme"}, {"next_steps", std::move(steps)}};
  return {"own steps", std::move(answer), "explore", std::nullopt, {}, {}};
}

Request fields_request(std::size_t count) {
  JsonObject fields;
  for (std::size_t number = 0; number < count; ++number)
    fields.set("symbol_" + std::to_string(number), number);
  JsonObject answer{{"fqn", "acme"}, {"fields", std::move(fields)}};
  return symbol_request("fields", std::move(answer));
}

Request nulls_request(std::size_t count) {
  JsonList nulls;
  nulls.reserve(count);
  for (std::size_t number = 0; number < count; ++number) nulls.push_back(nullptr);
  JsonObject answer{{"fqn", "acme"}, {"values", std::move(nulls)}};
  return symbol_request("nulls", std::move(answer));
}

}  // namespace vantrex::bench

#include "words.h"

namespace vantrex::bench {

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

std::string capitalised(std::string_view word) {
  std::string text(word);
  text.front() = static_cast<char>(text.front() - 'a' + 'A');
  return text;
}

}  // namespace

std::string joined(std::initializer_list<std::string_view> texts) {
  std::string all;
  for (const std::string_view text : texts) all += text;
  return all;
}

std::string_view noun(Random& random) {
  return random.pick(kNouns);
}
std::string_view type_name(Random& random) {
  return random.pick(kTypes);
}
std::string_view symbol_kind(Random& random) {
  return random.pick(kKinds);
}
std::string_view sentence(Random& random) {
  return random.pick(kSentences);
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

}  // namespace vantrex::bench

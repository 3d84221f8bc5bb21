#include "words.h"

#include <array>

namespace vantrex::bench {

namespace {

constexpr std::array<std::string_view, 24> kNouns = {
    "segment", "index",  "symbol", "query",   "token", "reader", "cache",   "graph",
    "module",  "parser", "scope",  "writer",  "edge",  "node",   "ranking", "snapshot",
    "commit",  "branch", "policy", "session", "range", "chunk",  "storage", "embedding"};
constexpr std::array<std::string_view, 8> kVerbs = {"flush", "load",    "resolve", "merge",
                                                    "parse", "collect", "find",    "build"};
constexpr std::array<std::string_view, 6> kSentences = {
    "Writes what is pending and waits until it is on disk.",
    "Callers hold the lock; nothing here blocks.",
    "An empty range means \"everything\".",
    "Paths use forward slashes (src/app.py).",
    "Gibt die Größe in Bytes zurück, für jede Datei.",
    "索引を更新します。"};
constexpr std::array<std::string_view, 4> kCodeLines = {
    "for entry in self._entries:\n\tif entry.name == \"main\":\n",
    "\t\tlog.debug(\"kept %s of %d\", entry.name, total)\n", "\twith self._lock:\n\t\tself._cache.clear()\n",
    "\tpattern = re.compile(r\"\\w+\\.py$\")\n"};

std::string_view pick(Random& random, const auto& texts) {
  return texts[random.below(texts.size())];
}

std::string capitalised_noun(Random& random) {
  std::string text(noun(random));
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
  return pick(random, kNouns);
}

std::string function_name(Random& random) {
  const std::string name = joined({pick(random, kVerbs), "_", noun(random)});
  return random.one_in(3) ? joined({name, "_", noun(random)}) : name;
}

std::string class_name(Random& random) {
  return capitalised_noun(random) + capitalised_noun(random);
}

std::string signature(Random& random, std::string_view name) {
  return joined({"def ", name, "(self, ", noun(random), ": Path | None, force: bool = False) -> int"});
}

std::string prose(Random& random, std::size_t sentences) {
  std::string text;
  for (std::size_t count = 0; count < sentences; ++count) {
    if (count > 0) text += count % 3 == 0 ? "\n\n" : " ";
    text += pick(random, kSentences);
  }
  return text;
}

std::string code(Random& random, std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) text += pick(random, kCodeLines);
  text.resize(bytes);
  return text;
}

}  // namespace vantrex::bench

#include "requests/index_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "requests/failures.h"
#include "requests/members.h"
#include "vantrex/workers/name_lookup.h"

namespace next_steps_requests {

using models::InMemoryRepository;
using models::SymbolView;
using values::Kind;

namespace {

// First those of ctags, in the order in which it writes them.
constexpr std::array<std::string_view, 9> kLineKeys = {"_type", "name",  "path", "language", "line",
                                                       "kind",  "scope", "fqn",  "file"};
constexpr std::array<std::string_view, 4> kSymbolKeys = {"fqn", "kind", "file", "line"};
constexpr std::array<std::string_view, 1> kPathKeys = {"path"};

std::string_view optional_text(Members& line, std::string_view key) {
  return line.optional(key, Kind::string).string().value_or("");
}

std::size_t line_number(Members& line) {
  const values::JsonValue& number = line.optional("line", Kind::integer);
  if (number.is_null()) return 0;
  if (const auto valid = number.integer<std::size_t>()) return *valid;
  line.reject("line", "must be the number of a line");
}

bool is_one_of(std::string_view text, std::initializer_list<std::string_view> texts) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// Returns the separator between a scope and a name. ctags joins the parts of a scope as the
// language does, so only a scope with a single part leaves the separator open.
std::string_view separator(std::string_view scope, std::string_view language, std::string_view path) {
  const std::string_view ending = path.substr(std::min(path.rfind('.'), path.size()));
  const bool colons = language.empty()
                          ? is_one_of(ending, {".h", ".hh", ".hpp", ".hxx", ".cc", ".cpp", ".cxx", ".rs"})
                          : is_one_of(language, {"C++", "Rust"});
  return colons || scope.find("::") != std::string_view::npos ? "::" : ".";
}

std::string how_to_make_one() {
  return std::string("; an index is made by: ") + kCtagsCommand;
}

// Builds a repository from the lines of an index.
class IndexFiller {
 public:
  void add(std::string_view text) {
    Members line(text, "a line of an index", kLineKeys);
    if (line.has("_type")) {
      add_tag(line);
    } else if (line.has("fqn")) {
      line.allow_only(kSymbolKeys, "a symbol");
      const std::string_view fqn = line.text("fqn");
      add({fqn, vantrex::workers::guessed_name(fqn), optional_text(line, "kind"), optional_text(line, "file"),
           line_number(line)});
    } else if (line.has("path")) {
      line.allow_only(kPathKeys, "a path");
      add_path(line.text("path"));
    } else {
      line.reject(R"("_type", "fqn" or "path" is missing)");
    }
  }
  bool empty() const noexcept { return repository_.symbol_count() == 0 && paths_.empty(); }
  InMemoryRepository take() && { return std::move(repository_); }

 private:
  void add_tag(Members& line) {
    const std::string_view type = line.text("_type");
    if (type == "ptag") return;
    if (type != "tag") line.reject("_type", R"(must be "tag" or "ptag")");
    const std::string_view name = line.text("name");
    const std::string_view path = line.text("path");
    std::string fqn(optional_text(line, "scope"));
    if (!fqn.empty()) fqn += separator(fqn, optional_text(line, "language"), path);
    fqn += name;
    add({fqn, name, optional_text(line, "kind"), path, line_number(line)});
  }
  void add(const SymbolView& symbol) {
    repository_.add_symbol(symbol);
    if (!symbol.file.empty()) add_path(symbol.file);
  }
  // Adds the path unless it was added before. Most are recognised by their hashes; paths with equal hashes
  // can be prepared, so the others are searched for.
  void add_path(std::string_view path) {
    const std::string*& recent = recent_[std::hash<std::string_view>()(path) % recent_.size()];
    if (recent != nullptr && *recent == path) return;
    const auto [place, is_new] = paths_.emplace(path);
    recent = &*place;
    if (is_new) repository_.add_path(path);
  }

  InMemoryRepository repository_;
  std::set<std::string> paths_;
  std::vector<const std::string*> recent_ = std::vector<const std::string*>(std::size_t{1} << 18U);
};

}  // namespace

InMemoryRepository read_index(Input& input) {
  LineReader lines(input, [] {});
  IndexFiller filler;
  while (const auto line = lines.next()) {
    try {
      filler.add(*line);
    } catch (const JsonError& error) {
      if (lines.line_number() > 1) throw in_source(input.name(), error, lines.line_number());
      throw in_source(input.name(), JsonError(error.place(), error.what() + how_to_make_one()));
    }
  }
  if (filler.empty())
    throw InputRejected(input.name(), "the index holds no symbols and no paths" + how_to_make_one());
  return std::move(filler).take();
}

InMemoryRepository read_index(const std::string& file) {
  Input input(file);
  return read_index(input);
}

}  // namespace next_steps_requests

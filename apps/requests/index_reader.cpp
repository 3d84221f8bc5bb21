#include "requests/index_reader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <functional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "requests/failures.h"
#include "requests/json_reader.h"
#include "vantrex/workers/name_lookup.h"
#include "vantrex/workers/unknown_name.h"

namespace next_steps_requests {

using models::InMemoryRepository;
using models::SymbolView;
using values::Kind;
using vantrex::workers::quoted;

namespace {

// First those of ctags, in the order in which it writes them.
enum IndexKey : std::size_t { k_type, k_name, k_path, k_language, k_line, k_kind, k_scope, k_fqn, k_file };
constexpr std::array<std::string_view, 9> kIndexKeys = {"_type", "name",  "path", "language", "line",
                                                        "kind",  "scope", "fqn",  "file"};

// The fields of a line of an index. Borrows the line and `memory`. Throws JsonError.
class IndexLine {
 public:
  IndexLine(std::string_view text, std::string& memory)
      : text_(text), other_(pick_fields(text, "a line of an index", kIndexKeys, fields_, memory)) {}

  bool has(IndexKey key) const { return fields_[key].is_there(); }

  // The characters of a string, the digits of a number. Empty if it is absent or null.
  std::string_view optional(IndexKey key, Kind kind = Kind::string) const {
    return value(key, kind, " or null");
  }
  std::string_view required(IndexKey key) const { return value(key, Kind::string, ""); }

  std::size_t line_number() const {
    const std::string_view digits = optional(k_line, Kind::integer);
    std::size_t number = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (!digits.empty() && read.ec != std::errc()) reject(k_line, "must be the number of a line");
    return number;
  }

  // Rejects a key that is not among `known`.
  void allow_only(std::initializer_list<IndexKey> known, const std::string& what) const {
    PickedField wrong = other_;
    for (std::size_t key = 0; key < fields_.size(); ++key) {
      const bool is_known = std::find(known.begin(), known.end(), key) != known.end();
      if (fields_[key].is_there() && !is_known) wrong = {Kind::null, kIndexKeys[key], fields_[key].offset};
    }
    if (wrong.is_there()) reject(wrong.offset, quoted(wrong.text) + " is no member of " + what);
  }

  // Throws with the place of the key, which must be in the line, and "KEY MESSAGE".
  [[noreturn]] void reject(IndexKey key, const std::string& message) const {
    reject(fields_[key].offset, quoted(kIndexKeys[key]) + " " + message);
  }
  [[noreturn]] void reject(std::size_t offset, const std::string& message) const {
    throw JsonError(place_of(text_, offset), message);
  }

 private:
  std::string_view value(IndexKey key, Kind kind, std::string_view or_null) const {
    const PickedField& field = fields_[key];
    if (field.kind == kind || (field.kind == Kind::null && !or_null.empty())) return field.text;
    if (!field.is_there()) reject(text_.find('{'), quoted(kIndexKeys[key]) + " is missing");
    reject(key, wrong_kind(kind, or_null, field.kind));
  }

  std::string_view text_;
  std::array<PickedField, kIndexKeys.size()> fields_;
  PickedField other_;
};

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
    const IndexLine line(text, memory_);
    if (line.has(k_type)) {
      add_tag(line);
    } else if (line.has(k_fqn)) {
      line.allow_only({k_fqn, k_kind, k_file, k_line}, "a symbol");
      fqn_ = line.required(k_fqn);
      add({fqn_, vantrex::workers::guessed_name(fqn_), line.optional(k_kind), line.optional(k_file),
           line.line_number()});
    } else if (line.has(k_path)) {
      line.allow_only({k_path}, "a path");
      add_path(line.required(k_path));
    } else {
      line.reject(text.find('{'), R"("_type", "fqn" or "path" is missing)");
    }
  }
  bool empty() const noexcept { return repository_.symbol_count() == 0 && paths_.empty(); }
  InMemoryRepository take() && { return std::move(repository_); }

 private:
  void add_tag(const IndexLine& line) {
    const std::string_view type = line.required(k_type);
    if (type == "ptag") return;
    if (type != "tag") line.reject(k_type, R"(must be "tag" or "ptag")");
    const std::string_view name = line.required(k_name);
    const std::string_view path = line.required(k_path);
    fqn_ = line.optional(k_scope);
    if (!fqn_.empty()) fqn_ += separator(fqn_, line.optional(k_language), path);
    fqn_ += name;
    add({fqn_, name, line.optional(k_kind), path, line.line_number()});
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
  std::string memory_;  // of the line that is being read
  std::string fqn_;
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

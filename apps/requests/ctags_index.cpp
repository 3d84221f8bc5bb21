#include "requests/ctags_index.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "requests/failures.h"
#include "requests/members.h"
#include "vantrex/models/first_positions.h"

namespace next_steps_requests {

using models::InMemoryRepository;
using models::Symbol;
using values::JsonValue;
using values::Kind;

namespace {

std::string required_text(Members& members, std::string_view key) {
  return std::string(*std::as_const(members.required(key, Kind::string)).string());
}

std::string optional_text(Members& members, std::string_view key) {
  const JsonValue* value = members.optional(key, Kind::string);
  return value == nullptr ? "" : std::string(*value->string());
}

std::size_t line_number(Members& members) {
  const JsonValue* value = members.optional("line", Kind::integer);
  if (value == nullptr) return 0;
  const std::int64_t number = value->integer<std::int64_t>().value_or(-1);
  if (number < 0) members.reject("line", "must be the number of a line");
  return static_cast<std::size_t>(number);
}

template <std::size_t count>
bool is_one_of(std::string_view text, const std::array<std::string_view, count>& texts) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

// Returns the separator between a scope and a name. ctags joins the parts of a scope as the
// language does, so only a scope with a single part leaves the separator open.
std::string_view separator(std::string_view scope, std::string_view language, std::string_view path) {
  constexpr std::array<std::string_view, 2> kLanguages = {"C++", "Rust"};
  constexpr std::array<std::string_view, 8> kEndings = {".h",  ".hh",  ".hpp", ".hxx",
                                                        ".cc", ".cpp", ".cxx", ".rs"};
  const std::string_view ending = path.substr(std::min(path.rfind('.'), path.size()));
  const bool colons = language.empty() ? is_one_of(ending, kEndings) : is_one_of(language, kLanguages);
  return colons || scope.find("::") != std::string_view::npos ? "::" : ".";
}

Symbol symbol_of(Members& members) {
  Symbol symbol;
  symbol.name = required_text(members, "name");
  symbol.file = required_text(members, "path");
  symbol.kind = optional_text(members, "kind");
  symbol.line = line_number(members);
  symbol.fqn = optional_text(members, "scope");
  if (!symbol.fqn.empty()) {
    symbol.fqn += separator(symbol.fqn, optional_text(members, "language"), symbol.file);
  }
  symbol.fqn += symbol.name;
  return symbol;
}

std::string how_to_make_one() {
  return std::string("; an index is made by: ") + kCtagsCommand;
}

// Builds a repository from the lines of an index.
class IndexFiller {
 public:
  void add(std::string_view line) {
    Members members(line, "a tag");
    const std::string type = required_text(members, "_type");
    if (type == "ptag") return;
    if (type != "tag") members.reject("_type", R"(must be "tag" or "ptag")");
    Symbol symbol = symbol_of(members);
    if (paths_.empty() || paths_.back() != symbol.file) paths_.push_back(symbol.file);
    repository_.add_symbol(symbol);
  }
  bool empty() const noexcept { return paths_.empty(); }
  InMemoryRepository take() && {
    const auto path_at = [this](std::size_t position) -> const std::string& { return paths_[position]; };
    for (const std::size_t position : vantrex::models::first_positions(paths_.size(), path_at)) {
      repository_.add_path(paths_[position]);
    }
    return std::move(repository_);
  }

 private:
  InMemoryRepository repository_;
  std::vector<std::string> paths_;  // of each symbol, unless it is that of the one before
};

}  // namespace

InMemoryRepository read_ctags_index(Input& input) {
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
  if (filler.empty()) throw InputRejected(input.name(), "the index holds no symbols" + how_to_make_one());
  return std::move(filler).take();
}

InMemoryRepository read_ctags_index(const std::string& file) {
  Input input(file);
  return read_ctags_index(input);
}

}  // namespace next_steps_requests

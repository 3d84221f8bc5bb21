// The symbol model: what an index knows of a symbol, and which symbols are code.
//
// Ownership: Symbol owns its texts, SymbolView borrows them. Threads: plain
// values and pure functions.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace vantrex::models {

// What an index knows of one symbol. What it does not know is empty, or 0.
struct Symbol {
  std::string fqn;       // "pkg.mod.Thing.run"
  std::string name;      // "run"
  std::string kind;      // "method"
  std::string file;      // "pkg/mod.py"
  std::size_t line = 0;  // from 1
};

// The same, borrowed from an index for the length of a call.
struct SymbolView {
  std::string_view fqn;
  std::string_view name;
  std::string_view kind;
  std::string_view file;
  std::size_t line = 0;
};

// Whether a symbol of `kind` in the file `path` is code: false for the parts of
// a document (a heading, a key) and for whatever lies in a document or a data
// file, told by the end of its path. ASCII case does not matter; an unknown
// kind or path speaks against nothing.
bool is_code_symbol(std::optional<std::string_view> kind, std::optional<std::string_view> path) noexcept;

}  // namespace vantrex::models

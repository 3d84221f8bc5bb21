// The symbol model: what an index knows of a symbol, and which symbols are code.
//
// Ownership: Symbol owns its texts, SymbolView borrows them. Threads: plain
// values and pure functions.
#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "vantrex/export.h"

namespace vantrex::models {

// What an index knows of one symbol, borrowed from it for the length of a call.
// What it does not know is empty, or 0.
struct SymbolView {
  std::string_view fqn = {};   // "pkg.mod.Thing.run"
  std::string_view name = {};  // "run"
  std::string_view kind = {};  // "method"
  std::string_view file = {};  // "pkg/mod.py"
  std::size_t line = 0;        // from 1

  // Field by field, in the order above.
  friend auto operator<=>(const SymbolView&, const SymbolView&) = default;
};

// The same, to keep.
struct Symbol {
  // As those of SymbolView.
  std::string fqn = {};
  std::string name = {};
  std::string kind = {};
  std::string file = {};
  std::size_t line = 0;

  // Borrows the texts: it is valid until this object changes.
  SymbolView view() const noexcept { return {fqn, name, kind, file, line}; }
};

// Whether a symbol of `kind` in the file `path` is code: false for the parts of
// a document (a heading, a key) and for whatever lies in a document or a data
// file, told by the end of its path. ASCII case does not matter; an unknown
// kind or path speaks against nothing.
NEXT_STEPS_API bool is_code_symbol(std::optional<std::string_view> kind,
                                   std::optional<std::string_view> path) noexcept;

}  // namespace vantrex::models

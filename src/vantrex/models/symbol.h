// The symbol model: what an index knows about a symbol, and which symbols are code.
//
// Ownership: Symbol owns its texts, SymbolView borrows them. Threads: plain values and pure functions.
#pragma once

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "vantrex/export.h"

namespace vantrex::models {

/// What an index knows about one symbol, borrowed for the length of a call. An unknown field is empty, or 0.
struct SymbolView {
  std::string_view fqn = {};   ///< "pkg.mod.Thing.run"
  std::string_view name = {};  ///< "run"
  std::string_view kind = {};  ///< "method"
  std::string_view file = {};  ///< "pkg/mod.py"
  std::size_t line = 0;        ///< from 1

  /// Compares field by field, in the order above.
  friend auto operator<=>(const SymbolView&, const SymbolView&) = default;
};

/// A SymbolView that owns its texts.
struct Symbol {
  std::string fqn = {};   ///< "pkg.mod.Thing.run"
  std::string name = {};  ///< "run"
  std::string kind = {};  ///< "method"
  std::string file = {};  ///< "pkg/mod.py"
  std::size_t line = 0;   ///< from 1

  /// A view of this symbol, valid until the symbol changes.
  SymbolView view() const noexcept { return {fqn, name, kind, file, line}; }
};

/// Whether a symbol of `kind` in the file `path` is code. False for a part of a document (a heading, a key)
/// and for any symbol in a document or data file, which is recognised by its suffix. ASCII case does not
/// matter. An unknown kind or path does not exclude it.
NEXT_STEPS_API bool is_code_symbol(std::optional<std::string_view> kind,
                                   std::optional<std::string_view> path) noexcept;

}  // namespace vantrex::models

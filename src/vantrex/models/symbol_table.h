// SymbolTable: the symbols and the paths of an index, in little memory.
//
// Purpose: the kinds, files and names of an index are mostly equal to earlier ones. Most of these texts are
// kept once.
//
// Ownership: owns its texts; views of them are valid until something is added. Threads: safe for concurrent
// reads.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/models/symbol.h"

namespace vantrex::models {

class SymbolTable {
 public:
  // Throws std::bad_alloc; the table then holds what it held before.
  void add_symbol(const SymbolView& symbol);
  void add_path(std::string_view path);

  std::size_t symbol_count() const noexcept { return symbols_.size(); }
  std::size_t path_count() const noexcept { return paths_.size(); }
  // By number, in the order in which they were added.
  SymbolView symbol(std::size_t number) const noexcept;
  std::string_view path(std::size_t number) const noexcept { return text_at(paths_[number]); }

 private:
  // The positions of its texts in `texts_`.
  struct Row {
    std::size_t fqn;
    std::size_t name;
    std::size_t kind;
    std::size_t file;
    std::size_t line;
  };

  struct Recent {
    std::size_t hash = 0;
    std::size_t position = 0;
  };

  // Where the text is stored; stores it if it is not among the recent ones.
  std::size_t position_of(std::string_view text);
  std::string_view text_at(std::size_t position) const noexcept;

  std::string texts_ = std::string(1, '\0');  // the size and the bytes of each text; the first is empty
  std::size_t stored_ = 0;                    // the number of texts
  std::vector<Recent> recent_;                // each at its hash
  std::vector<Row> symbols_;
  std::vector<std::size_t> paths_;
};

}  // namespace vantrex::models

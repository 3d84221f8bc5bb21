// What is in a NameIndex.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "vantrex/models/name_index.h"
#include "vantrex/models/symbol_table.h"
#include "vantrex/names/name_columns.h"

namespace vantrex::models {

struct NameIndex::Contents {
  explicit Contents(std::shared_ptr<const SymbolTable> symbols_and_paths);

  std::shared_ptr<const SymbolTable> table;
  names::NameColumns symbols;            // by the last part of the fqn
  names::NameColumns paths;              // by the file's name
  std::vector<std::size_t> other_names;  // symbols whose name is not the last part of the fqn, by their name
};

}  // namespace vantrex::models

#include "vantrex/models/repository.h"

namespace vantrex::models {

void InMemoryRepository::visit_symbols(const SymbolVisitor& visit) const {
  for (const Symbol& symbol : symbols_) visit(symbol.view());
}

void InMemoryRepository::visit_paths(const PathVisitor& visit) const {
  for (const std::string& path : paths_) visit(path);
}

}  // namespace vantrex::models

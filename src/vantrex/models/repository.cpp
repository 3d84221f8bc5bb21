#include "vantrex/models/repository.h"

#include <utility>

#include "vantrex/models/name_index.h"
#include "vantrex/models/symbol_table.h"

namespace vantrex::models {

InMemoryRepository::InMemoryRepository(std::string indexed_revision, std::string present_revision)
    : table_(std::make_shared<SymbolTable>()),
      indexed_revision_(std::move(indexed_revision)),
      present_revision_(std::move(present_revision)) {}

InMemoryRepository::InMemoryRepository(const InMemoryRepository& other)
    : Repository(other),
      table_(std::make_shared<SymbolTable>(*other.table_)),
      indexed_revision_(other.indexed_revision_),
      present_revision_(other.present_revision_) {}

// The name index may be in use elsewhere, so its table does not change.
SymbolTable& InMemoryRepository::table_to_change() {
  if (name_index_) table_ = std::make_shared<SymbolTable>(*table_);
  name_index_.reset();
  return *table_;
}

void InMemoryRepository::add_symbol(const SymbolView& symbol) {
  table_to_change().add_symbol(symbol);
}

void InMemoryRepository::add_path(std::string_view path) {
  table_to_change().add_path(path);
}

void InMemoryRepository::make_name_index() {
  name_index_.reset(new NameIndex(table_));
}

std::size_t InMemoryRepository::symbol_count() const noexcept {
  return table_->symbol_count();
}

SymbolView InMemoryRepository::symbol_at(std::size_t position) const noexcept {
  return table_->symbol(position);
}

void InMemoryRepository::visit_symbols(const SymbolVisitor& visit) const {
  for (std::size_t position = 0; position < symbol_count(); ++position) visit(symbol_at(position));
}

void InMemoryRepository::visit_paths(const PathVisitor& visit) const {
  for (std::size_t number = 0; number < table_->path_count(); ++number) visit(table_->path(number));
}

}  // namespace vantrex::models

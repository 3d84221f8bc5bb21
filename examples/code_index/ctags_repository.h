// CtagsRepository: an index that was read from a file, and whether the file has changed since.
#pragma once

#include <string>

#include "vantrex/models/repository.h"

namespace code_index {

namespace models = vantrex::models;

class CtagsRepository final : public models::Repository {
 public:
  // Reads an index of Universal Ctags. Throws what read_index throws.
  explicit CtagsRepository(std::string path);

  void visit_symbols(const models::SymbolVisitor& visit) const override { index_.visit_symbols(visit); }
  void visit_paths(const models::PathVisitor& visit) const override { index_.visit_paths(visit); }

  // The revision is that of the file: its time of change and its size.
  std::string indexed_revision() const override { return indexed_revision_; }
  std::string present_revision() const override;

 private:
  std::string path_;
  std::string indexed_revision_;  // taken before reading: a change meanwhile is noticed
  models::InMemoryRepository index_;
};

}  // namespace code_index

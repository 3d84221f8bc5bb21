// CtagsRepository: an index that was read from a file, and whether the file has changed since.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "vantrex/models/repository.h"

namespace code_index {

namespace models = vantrex::models;

class CtagsRepository final : public models::Repository {
 public:
  // Reads an index of Universal Ctags. Throws what read_index throws.
  explicit CtagsRepository(std::string path);

  std::size_t symbol_count() const { return index_.symbol_count(); }
  models::SymbolView symbol_at(std::size_t position) const { return index_.symbol_at(position); }

  // The paths of all files, in order, each with the positions of its symbols.
  using Files = std::map<std::string_view, std::vector<std::size_t>>;
  const Files& files() const { return files_; }

  void visit_symbols(const models::SymbolVisitor& visit) const override { index_.visit_symbols(visit); }
  void visit_paths(const models::PathVisitor& visit) const override { index_.visit_paths(visit); }
  std::shared_ptr<const models::NameIndex> name_index() const override { return index_.name_index(); }

  // The revision is that of the file: its time of change and its size.
  std::string indexed_revision() const override { return indexed_revision_; }
  std::string present_revision() const override;

 private:
  std::string path_;
  std::string indexed_revision_;  // taken before reading: a change meanwhile is noticed
  models::InMemoryRepository index_;
  Files files_;
};

}  // namespace code_index

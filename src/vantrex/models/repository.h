// Repository: the read-only handle of a code index, and one held in memory.
//
// Purpose: whatever asks the index (name lookup, freshness) sees it through
// this handle; a host puts its own index behind it.
//
// Ownership: the handle lends what it visits for the length of one call.
// Threads: the const functions of one repository may be called on several
// threads at once; an implementation sees to that, as InMemoryRepository does
// while nobody adds to it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "vantrex/export.h"
#include "vantrex/models/symbol.h"

namespace vantrex::models {

// What is called for each symbol or path, one after the other and on the thread
// that asked. The texts it is given are any bytes and are valid until it
// returns. What it throws must end the visit and reach whoever asked for it.
using SymbolVisitor = std::function<void(const SymbolView& symbol)>;
using PathVisitor = std::function<void(std::string_view path)>;

// The handle of an index, to be derived from by whoever has one.
class NEXT_STEPS_API Repository {
 public:
  virtual ~Repository() = default;

  // Calls `visit` for every symbol, or every file's path, in any order. May
  // throw whatever the index fails with.
  virtual void visit_symbols(const SymbolVisitor& visit) const = 0;
  virtual void visit_paths(const PathVisitor& visit) const = 0;

  // The revision of the tree that was indexed, and the one that the tree has
  // now. The index is current while the two texts are equal.
  virtual std::string indexed_revision() const = 0;
  virtual std::string present_revision() const = 0;

 protected:
  // A handle is copied and moved as a part of what is derived from it.
  Repository() = default;
  Repository(const Repository&) = default;
  Repository(Repository&&) = default;
  Repository& operator=(const Repository&) = default;
  Repository& operator=(Repository&&) = default;
};

// An index that is filled by hand and visited in the order of filling.
class NEXT_STEPS_API InMemoryRepository final : public Repository {
 public:
  // An empty index; it is current unless two revisions say otherwise.
  InMemoryRepository() = default;
  InMemoryRepository(std::string indexed_revision, std::string present_revision)
      : indexed_revision_(std::move(indexed_revision)), present_revision_(std::move(present_revision)) {}

  // Adds what later visits show, repeats included. Throws std::bad_alloc.
  void add_symbol(Symbol symbol) { symbols_.push_back(std::move(symbol)); }
  void add_path(std::string path) { paths_.push_back(std::move(path)); }

  void visit_symbols(const SymbolVisitor& visit) const override;
  void visit_paths(const PathVisitor& visit) const override;
  std::string indexed_revision() const override { return indexed_revision_; }
  std::string present_revision() const override { return present_revision_; }

 private:
  std::vector<Symbol> symbols_;
  std::vector<std::string> paths_;
  std::string indexed_revision_;
  std::string present_revision_;
};

}  // namespace vantrex::models

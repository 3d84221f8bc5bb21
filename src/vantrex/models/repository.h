// Repository: the read-only interface of a code index, and an implementation in memory.
//
// Purpose: name lookup and freshness read the index through this interface. A host implements it for its own
// index.
//
// Ownership: a visitor borrows what it is given for the length of one call. Threads: the const functions of a
// repository must be safe for concurrent calls. Those of InMemoryRepository are, while nothing is added to
// it.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "vantrex/export.h"
#include "vantrex/models/symbol.h"

namespace vantrex::models {

class NameIndex;
class SymbolTable;

/// Called for each symbol, one at a time, on the thread of the caller. The texts are any bytes and are valid
/// until it returns. An exception from it must end the visit and reach the caller.
using SymbolVisitor = std::function<void(const SymbolView& symbol)>;
/// The same for the path of each file.
using PathVisitor = std::function<void(std::string_view path)>;

/// The interface of an index.
class NEXT_STEPS_API Repository {
 public:
  virtual ~Repository() = default;

  /// Calls `visit` for each symbol, in any order. May throw whatever the index fails with.
  virtual void visit_symbols(const SymbolVisitor& visit) const = 0;
  /// The same for the path of each file.
  virtual void visit_paths(const PathVisitor& visit) const = 0;

  /// The revision of the tree that was indexed. The index is current if it equals present_revision().
  virtual std::string indexed_revision() const = 0;
  /// The revision that the tree has now.
  virtual std::string present_revision() const = 0;

  /// An index of all that the visits show, or null if there is none; lookups are then slower. A replaced
  /// index stays valid for those who hold it.
  virtual std::shared_ptr<const NameIndex> name_index() const { return nullptr; }

 protected:
  /// Created only as a base class.
  Repository() = default;
  /// Copied only as a base class.
  Repository(const Repository&) = default;
  /// Moved only as a base class.
  Repository(Repository&&) = default;
  /// Copied only as a base class.
  Repository& operator=(const Repository&) = default;
  /// Moved only as a base class.
  Repository& operator=(Repository&&) = default;
};

/// An index in memory. Entries are added by hand and visited in that order.
class NEXT_STEPS_API InMemoryRepository final : public Repository {
 public:
  /// An empty index, which is current. Throws std::bad_alloc.
  InMemoryRepository() : InMemoryRepository({}, {}) {}
  /// An empty index of `indexed_revision`, in a tree that now has `present_revision`. Throws std::bad_alloc.
  InMemoryRepository(std::string indexed_revision, std::string present_revision);
  /// Copies all entries, without the name index. Throws std::bad_alloc.
  InMemoryRepository(const InMemoryRepository& other);
  /// Copies all entries, without the name index. Throws std::bad_alloc.
  InMemoryRepository& operator=(const InMemoryRepository& other) { return *this = InMemoryRepository(other); }
  /// Leaves `other` such that it can only be assigned to and destroyed.
  InMemoryRepository(InMemoryRepository&& other) noexcept = default;
  /// Leaves `other` such that it can only be assigned to and destroyed.
  InMemoryRepository& operator=(InMemoryRepository&& other) noexcept = default;
  ~InMemoryRepository() override = default;

  /// Adds a copy of a symbol; repeats are kept. Drops the name index. Throws std::bad_alloc; the entries are
  /// then unchanged.
  void add_symbol(const SymbolView& symbol);
  /// The same for a path.
  void add_path(std::string_view path);

  /// Makes the name index of the present entries. Takes half a second for a million symbols. Throws
  /// std::bad_alloc.
  void make_name_index();

  /// How many symbols there are.
  std::size_t symbol_count() const noexcept;
  /// The symbol at `position`, which is below symbol_count(), in the order of the visit. Its texts are valid
  /// until something is added.
  SymbolView symbol_at(std::size_t position) const noexcept;

  void visit_symbols(const SymbolVisitor& visit) const override;
  void visit_paths(const PathVisitor& visit) const override;
  std::string indexed_revision() const override { return indexed_revision_; }
  std::string present_revision() const override { return present_revision_; }
  std::shared_ptr<const NameIndex> name_index() const override { return name_index_; }

 private:
  SymbolTable& table_to_change();

  std::shared_ptr<SymbolTable> table_;  // shared with the name index
  std::shared_ptr<const NameIndex> name_index_;
  std::string indexed_revision_;
  std::string present_revision_;
};

}  // namespace vantrex::models

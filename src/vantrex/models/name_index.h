// NameIndex: makes lookups of names fast.
//
// Purpose: a lookup in a repository without an index visits all of it. With one it takes a hundredth of the
// time and finds the same names. A host makes one when it starts and when its data change, and gives it out
// from Repository::name_index:
//
//   index_ = std::make_shared<const NameIndex>(*this);
//
// Ownership: owns all that it needs; the repository may change afterwards. Threads: immutable; safe for
// concurrent reads.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "vantrex/export.h"
#include "vantrex/models/repository.h"
#include "vantrex/models/symbol.h"

namespace vantrex::models {

/// The symbols and paths of a repository at one time, arranged by name.
class NEXT_STEPS_API NameIndex {
 public:
  /// Visits `repository`. Takes half a second and 100 MB for a million symbols. Throws std::bad_alloc and
  /// what the visit throws.
  explicit NameIndex(const Repository& repository);
  ~NameIndex();
  /// Shared, not copied.
  NameIndex(const NameIndex&) = delete;
  /// Shared, not copied.
  NameIndex& operator=(const NameIndex&) = delete;

  /// The symbols whose fqn or name is `name`, in the order of the visit. Their texts are valid as long as the
  /// index is. Throws std::bad_alloc.
  std::vector<SymbolView> symbols_named(std::string_view name) const;

  /// Whether there is a file with this path. Throws std::bad_alloc.
  bool holds_path(std::string_view path) const;

  /// For the lookups of this library.
  struct Contents;
  /// For the lookups of this library.
  const Contents& contents() const noexcept { return *contents_; }

 private:
  friend class InMemoryRepository;

  explicit NameIndex(std::shared_ptr<const SymbolTable> table);

  std::unique_ptr<const Contents> contents_;
};

}  // namespace vantrex::models

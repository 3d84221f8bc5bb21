// Name lookup: the names in an index that are nearest to a name that it does not hold.
//
// Purpose: the did-you-mean lists of a miss. Gives at most five candidates, best first, each once; none if
// nothing is near. Names and paths may be any bytes. The result does not depend on the order of the index.
//
// Ownership: results own their texts. Threads: no state; safe for concurrent calls if the repository is.
//
// Cost: linear in the length of the names in the repository; a small part of that if it has a name index.
// Allocates only for a few names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vantrex/export.h"
#include "vantrex/models/repository.h"
#include "vantrex/models/symbol.h"
#include "vantrex/values/json_value.h"

namespace vantrex::workers {

/// A symbol of the index that may be the wanted one.
struct NEXT_STEPS_API SymbolCandidate : models::Symbol {
  /// The object {"fqn", "name", "kind", "file", "line"} without unknown fields. Ill-formed bytes are replaced
  /// by U+FFFD. Throws std::bad_alloc.
  values::JsonObject to_dict() const;
};

/// The symbols nearest to `wanted`, a name or an fqn. Symbols without an fqn are skipped. Throws
/// std::bad_alloc and what visiting `repository` throws.
NEXT_STEPS_API std::vector<SymbolCandidate> nearest_symbols(const models::Repository& repository,
                                                            std::string_view wanted);

/// The paths nearest to `wanted`. Throws as nearest_symbols.
NEXT_STEPS_API std::vector<std::string> nearest_paths(const models::Repository& repository,
                                                      std::string_view wanted);

/// The name to search for when nothing is near: the last part of `wanted` without arguments, or "". Throws
/// std::bad_alloc.
NEXT_STEPS_API std::string guessed_name(std::string_view wanted);

}  // namespace vantrex::workers

// Name lookup: what the index holds that is nearest to a name or a path it does
// not hold.
//
// Purpose: the did-you-mean lists of answers about a miss. At most five
// candidates are given, the best first, each once, and none rather than a
// guess. Names and paths may be any bytes. The result depends on what the index
// holds, not on the order in which it is visited.
//
// Ownership: results own their texts. Threads: nothing is kept between calls;
// one repository may be asked on several threads as far as it bears that.
//
// Cost: one visit of the index, in time linear in its names, with memory for a
// few names only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "vantrex/export.h"
#include "vantrex/models/repository.h"
#include "vantrex/models/symbol.h"
#include "vantrex/values/json_value.h"

namespace vantrex::workers {

// A symbol of the index that may be the one that was meant.
struct NEXT_STEPS_API SymbolCandidate : models::Symbol {
  // {"fqn", "name", "kind", "file", "line"}, without what the index does not
  // know. Ill-formed bytes are replaced by U+FFFD. Throws std::bad_alloc.
  values::JsonObject to_dict() const;
};

// The symbols nearest to `wanted`, a name or an fqn. Symbols without an fqn are
// passed over. Throws std::bad_alloc and whatever visiting `repository` throws.
NEXT_STEPS_API std::vector<SymbolCandidate> nearest_symbols(const models::Repository& repository,
                                                            std::string_view wanted);

// The paths nearest to `wanted`. Throws like nearest_symbols.
NEXT_STEPS_API std::vector<std::string> nearest_paths(const models::Repository& repository,
                                                      std::string_view wanted);

// The name to search for when nothing is near: the last part of `wanted`,
// without arguments; empty when there is none. Throws std::bad_alloc.
NEXT_STEPS_API std::string guessed_name(std::string_view wanted);

}  // namespace vantrex::workers

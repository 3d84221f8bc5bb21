// An index made by Universal Ctags.
//
// It is read from the JSON lines that ctags writes with --output-format=json:
//   {"_type": "tag", "name": "run", "path": "pkg/mod.py", "kind": "member",
//    "scope": "Thing", "line": 7, "language": "Python", ...}
// The members named here are used, the last four when they are there. Lines of
// the type "ptag", about the index itself, are passed over.
#pragma once

#include <string>

#include "vantrex/models/repository.h"

namespace next_steps_program {

// The command that makes such an index, for help texts.
inline constexpr const char* kCtagsCommand = "ctags --output-format=json --fields=+nl -R -f INDEX .";

// The index in `file`, standard input for "-": a symbol for each tag and its
// path once. A symbol's fqn is its scope and its name, joined as its language
// does. Throws InputRejected for the first line that is none of such an index and
// for an index without symbols, IoFailed and std::bad_alloc.
vantrex::models::InMemoryRepository read_ctags_index(const std::string& file);

}  // namespace next_steps_program

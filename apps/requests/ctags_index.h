// Reads an index made by Universal Ctags.
//
// The input is the JSON lines that ctags writes with --output-format=json:
//   {"_type": "tag", "name": "run", "path": "pkg/mod.py", "kind": "member",
//    "scope": "Thing", "line": 7, "language": "Python", ...}
// "kind", "scope", "line" and "language" are optional; other members are ignored. Lines of
// type "ptag" describe the index itself and are skipped.
#pragma once

#include <string>

#include "requests/input.h"
#include "requests/names.h"
#include "vantrex/models/repository.h"

namespace next_steps_requests {

// The command that makes such an index, for help and messages.
inline constexpr const char* kCtagsCommand = "ctags --output-format=json --fields=+nl -R -f - . >INDEX";

// Reads an index. Each tag becomes a symbol; each path is added once. A symbol's fqn is its
// scope and its name, joined as in its language. Throws InputRejected for the first invalid
// line and for an index without symbols, IoFailed and std::bad_alloc.
models::InMemoryRepository read_ctags_index(Input& input);
// The same for the index in `file`, or standard input for "-".
models::InMemoryRepository read_ctags_index(const std::string& file);

}  // namespace next_steps_requests

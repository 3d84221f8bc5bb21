// Reads an index, one object a line:
//   {"_type": "tag", "name", "path", "kind"?, "scope"?, "line"?, "language"?, ...}
//       is a tag of Universal Ctags; other members are ignored
//   {"_type": "ptag", ...}
//       describes the index of ctags and is skipped
//   {"fqn", "kind"?, "file"?, "line"?}
//       is a symbol
//   {"path"}
//       is a file, also one without symbols
// A member with "?" may be absent or null. A symbol or a file has no other members: one that is misspelt
// would be lost. A line with "_type" is a line of ctags, whatever else it has.
#pragma once

#include <string>

#include "requests/input.h"
#include "requests/names.h"
#include "vantrex/models/repository.h"

namespace next_steps_requests {

// The command that makes an index, for messages.
inline constexpr const char* kCtagsCommand = "ctags --output-format=json --fields=+nl -R -f - . >INDEX";
// What else an index may hold, for help.
inline constexpr const char* kIndexForms =
    "\nOr write it yourself. Each line is one of\n"
    "  {\"fqn\": string, \"kind\"?: string, \"file\"?: string, \"line\"?: integer}\n"
    "  {\"path\": string}\n"
    "A member with \"?\" may be absent or null; any other member is an error.";

// Reads an index. A tag's fqn is its scope and its name, joined as in its language; any other symbol's name
// is the last part of its fqn. The file of a symbol is a path of the index, too; each path is added once.
// Throws InputRejected for the first invalid line and for an index that is empty, IoFailed and
// std::bad_alloc.
models::InMemoryRepository read_index(Input& input);
// The same for the index in `file`, or standard input for "-".
models::InMemoryRepository read_index(const std::string& file);

}  // namespace next_steps_requests

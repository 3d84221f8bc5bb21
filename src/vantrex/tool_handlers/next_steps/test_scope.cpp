#include "vantrex/tool_handlers/next_steps/test_scope.h"

#include <cstddef>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/limits.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

using Paths = std::vector<const JsonValue*>;

// Appends the paths of `items`. Returns whether there are any.
bool append_listed(Paths& found, const JsonList& items) {
  const std::size_t size = found.size();
  for (const JsonValue& item : items) {
    if (const JsonValue* path = item_path(item, PlainStrings::are_paths)) found.push_back(path);
  }
  return found.size() > size;
}

// The paths that equal no earlier one, in their order. The set is sorted, not hashed: untrusted texts with
// equal hashes can be prepared.
JsonList without_repeats(const Paths& paths) {
  std::set<std::string_view> seen;
  JsonList files;
  for (const JsonValue* path : paths) {
    if (seen.insert(*path->string()).second) files.push_back(*path);
  }
  return files;
}

}  // namespace

JsonList _answer_files(const JsonObject& response, const JsonObject& arguments) {
  Paths found;
  if (const JsonValue& own = response["file"]; own.string()) found.push_back(&own);
  for (const std::string_view key : {"affected_files", "files"}) {
    const JsonList* items = response[key].list();
    if (items != nullptr && append_listed(found, *items)) break;
  }
  const JsonValue& requested = arguments["path"];
  if (found.empty() && requested.string()) found.push_back(&requested);
  return without_repeats(found);
}

JsonObject _tests_scope(const JsonObject& response, const JsonObject& arguments) {
  JsonList files = _answer_files(response, arguments);
  const JsonValue& base = response["base_branch"];
  const bool listed_all = files.size() <= MAX_STEP_FILES && response["files_omitted"].is_empty();
  const bool has_base = base.string() && !base.is_empty();
  JsonObject scope;
  if (has_base && (files.empty() || !listed_all)) {
    scope.append("base_branch", base);
  } else if (!files.empty()) {
    files.truncate(MAX_STEP_FILES);
    scope.append("changed_files", std::move(files));
  }
  return scope;
}

}  // namespace vantrex::tool_handlers::next_steps

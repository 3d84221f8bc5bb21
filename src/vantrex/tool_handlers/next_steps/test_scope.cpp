#include "vantrex/tool_handlers/next_steps/test_scope.h"

#include <string_view>
#include <unordered_set>
#include <utility>

#include "vantrex/tool_handlers/next_steps/answer_view.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"

namespace vantrex::tool_handlers::next_steps {

using values::JsonList;
using values::JsonObject;
using values::JsonValue;

namespace {

// A list of paths without repeats, in the order of their first addition.
class UniquePaths {
 public:
  void add(const JsonValue& path) {
    if (seen_.insert(*path.string()).second) paths_.push_back(path);
  }
  bool empty() const noexcept { return paths_.empty(); }
  JsonList take() && { return std::move(paths_); }

 private:
  std::unordered_set<std::string_view> seen_;  // views into the answer
  JsonList paths_;
};

// Adds the paths of `items`. Returns whether there are any.
bool add_listed(UniquePaths& found, const JsonList& items) {
  bool any = false;
  for (const JsonValue& item : items) {
    if (const JsonValue* path = item_path(item, PlainStrings::are_paths)) {
      found.add(*path);
      any = true;
    }
  }
  return any;
}

}  // namespace

JsonList _answer_files(const JsonObject& response, const JsonObject& arguments) {
  UniquePaths found;
  if (const JsonValue& own = response["file"]; own.string()) found.add(own);
  for (const std::string_view key : {"affected_files", "files"}) {
    const JsonList* items = response[key].list();
    if (items != nullptr && add_listed(found, *items)) break;
  }
  const JsonValue& requested = arguments["path"];
  if (found.empty() && requested.string()) found.add(requested);
  return std::move(found).take();
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

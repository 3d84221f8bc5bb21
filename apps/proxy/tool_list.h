// The tools that the server lists, and what the proxy does with their results.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "proxy/names.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace next_steps_proxy {

// What the user asked for. Borrows what it refers to.
struct ProxyOptions {
  const module::Catalogue* catalogue = nullptr;  // null for the module's tables
  const module::ServedTools* serves = nullptr;   // null for the tools that the server lists
  bool compact = false;                          // whether the answers of all tools are finished
};

// The tools on the pages of a list so far.
using ListedTools = std::vector<module::ServedTool>;

class ToolList {
 public:
  // Keeps a copy of the options.
  explicit ToolList(const ProxyOptions& options) : options_(options) {}

  // Whether the answers of the tool are finished.
  bool touches(std::string_view tool) const;

  // The tools that steps may call: those of the last complete list. Valid until the next page.
  const module::ServedTools* served() const {
    return options_.serves != nullptr ? options_.serves : &listed_;
  }

  // Returns what precedes the page that a request asks for: nothing if no page has led to this cursor.
  // Without a cursor, a new list begins.
  std::optional<ListedTools> pages_before(std::optional<std::string_view> cursor);

  // Takes the page in `line`, a response, after `before`. Returns the line with widened output schemas, or
  // nothing if none changes. Throws JsonError and std::bad_alloc.
  std::optional<std::string> add_page(std::string_view line, std::optional<ListedTools> before);

 private:
  ProxyOptions options_;
  module::ServedTools listed_;
  // The cursor of the next page, and what precedes it.
  std::optional<std::pair<std::string, ListedTools>> unfinished_;
};

}  // namespace next_steps_proxy

// One request in, one reply out.
//
// Threads: any number may call, also with the same context.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "requests/index_file.h"
#include "requests/json_reader.h"
#include "requests/names.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace next_steps_requests {

// What the requests of a client share. Borrows what it refers to.
struct ReplyContext {
  const module::ServedTools* serves = nullptr;   // for requests without "serves"; null for every tool
  IndexFile* index = nullptr;                    // for misses; null without an index
  bool lossy = false;                            // for requests without "lossy"
  const module::Catalogue* catalogue = nullptr;  // null for the module's tables
};

struct Reply {
  std::string line;                // without a line feed
  std::optional<JsonError> error;  // set when the reply is an error
};

// Returns the reply to the request whose first line has the number `line_number`, and whose form
// kRequestForms describes. Each line has a reply. If the line cannot be read as JSON, the reply has the id if
// that ends before the error. Throws std::bad_alloc.
Reply reply_to(std::string_view line, std::size_t line_number, const ReplyContext& context);

}  // namespace next_steps_requests

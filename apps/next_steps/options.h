// The options that several subcommands have.
//
// Ownership: a parser keeps references to the object whose options it has. Reading throws InputRejected,
// IoFailed and std::bad_alloc.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "next_steps/names.h"
#include "requests/input.h"
#include "requests/request.h"
#include "vantrex/tool_handlers/next_steps/catalogue.h"
#include "vantrex/tool_handlers/next_steps/served_tools.h"

namespace CLI {
class App;
}

namespace next_steps_program {

// The options about the server: --serves and --catalogue.
class ServerOptions {
 public:
  void add_to(CLI::App& parser);

  // The tools that the server has, owned by this object; null without --serves.
  const module::ServedTools* serves() const noexcept { return serves_ ? &*serves_ : nullptr; }

  // The server's own catalogue, owned by this object; null without --catalogue. Reads its file at the first
  // call.
  const module::Catalogue* catalogue();

 private:
  std::optional<module::ServedTools> serves_;
  std::string catalogue_file_;
  std::optional<module::Catalogue> catalogue_;
};

// --action, --arguments, --freshness and those of ServerOptions.
class RequestOptions {
 public:
  // `action_help` describes --action.
  void add_to(CLI::App& parser, const std::string& action_help);

  // Returns a request without a tool and an answer. It refers to this object.
  requests::Request read();

 private:
  std::optional<std::string> action_;
  std::string arguments_ = "null";
  std::string freshness_ = "null";
  ServerOptions server_;
};

// --tool, those of RequestOptions, and the answer's file.
class AnswerOptions {
 public:
  void add_to(CLI::App& parser);

  // Returns the request with the answer, which is read now. It refers to this object.
  requests::Request read();

 private:
  std::string tool_;
  RequestOptions request_;
  std::string file_;
};

// Returns the answer in `file`; "-" and "" are standard input.
values::JsonObject read_answer(const std::string& file);

// If `input` is a terminal, says on standard error that `awaited` is expected there.
void announce(const requests::Input& input, std::string_view awaited);

}  // namespace next_steps_program

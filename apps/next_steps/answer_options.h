// The options of the subcommands that finish one answer: finish, explain and suggest.
//
// Ownership: a parser keeps references to the object whose options it has. Reading throws InputRejected,
// IoFailed and std::bad_alloc.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "next_steps/names.h"
#include "next_steps/server_options.h"
#include "requests/input.h"
#include "requests/request.h"

namespace CLI {
class App;
}

namespace next_steps_program {

// --action, --arguments, --freshness, --serves and --catalogue.
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

// Returns the answer in `file`; "-" and "" are standard input.
values::JsonObject read_answer(const std::string& file);

// If `input` is a terminal, says on standard error that `awaited` is expected there.
void announce(const requests::Input& input, std::string_view awaited);

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

}  // namespace next_steps_program

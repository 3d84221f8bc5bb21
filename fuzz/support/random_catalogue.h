// Random catalogues of servers, and requests to such a server.
#pragma once

#include "fuzz/support/random_tree.h"
#include "vantrex/values/json_value.h"

namespace vantrex::fuzz {

// A catalogue in its JSON format, for the tools and actions of Random::request, with kinds of argument of its
// own.
values::JsonObject random_catalogue(Random& random);

// A request whose answer and arguments have the fields that those kinds read. It has no steps of its own.
Request request_to_own_server(Random& random);

// One-to-one renaming of what a catalogue may name freely: tools, actions, the arguments of steps, and the
// fields that kinds of its own read. Names keep their lengths, so that sizes stay.
class Renaming {
 public:
  explicit Renaming(Random& random);

  values::JsonObject catalogue(const values::JsonObject& catalogue) const;
  Request request(const Request& request) const;
  // A finished answer whose steps come from the tables or from a miss.
  values::JsonObject finished(const values::JsonObject& answer) const;

 private:
  std::string name(std::string_view text) const;
  std::string argument(std::string_view text) const;
  // `value` with the fields of own kinds renamed, at any depth.
  values::JsonValue fields(const values::JsonValue& value) const;
  values::JsonObject fields(const values::JsonObject& object) const;
  values::JsonValue path(const values::JsonValue& keys) const;
  values::JsonObject arguments(const values::JsonObject& args) const;
  values::JsonObject call(const values::JsonObject& call) const;

  std::string letters_ = "abcdefghijklmnopqrstuvwxyz";
};

}  // namespace vantrex::fuzz

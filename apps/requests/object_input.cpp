#include "requests/object_input.h"

#include "requests/failures.h"
#include "requests/input.h"

namespace next_steps_requests {

values::JsonObject read_object(const std::string& source, std::string_view text, std::string_view what,
                               RepeatedKeys repeated) {
  try {
    return read_json_object(text, what, repeated);
  } catch (const JsonError& error) {
    throw in_source(source, error);
  }
}

module::Catalogue read_catalogue(const std::string& file) {
  Input input(file);
  try {
    return module::Catalogue::from_json(
        read_object(input.name(), input.read_all(), "a catalogue", RepeatedKeys::are_errors));
  } catch (const module::CatalogueError& error) {
    throw InputRejected(input.name(), error.what());
  }
}

}  // namespace next_steps_requests

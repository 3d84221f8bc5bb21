#include "requests/catalogue_file.h"

#include "requests/failures.h"
#include "requests/input.h"
#include "requests/json_reader.h"

namespace next_steps_requests {

module::Catalogue read_catalogue(const std::string& file) {
  Input input(file);
  try {
    return module::Catalogue::from_json(
        read_json_object(input.read_all(), "a catalogue", RepeatedKeys::are_errors));
  } catch (const JsonError& error) {
    throw in_source(input.name(), error);
  } catch (const module::CatalogueError& error) {
    throw InputRejected(input.name(), error.what());
  }
}

}  // namespace next_steps_requests

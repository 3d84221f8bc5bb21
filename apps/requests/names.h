// Short names of the library's namespaces.
#pragma once

namespace vantrex::models {}
namespace vantrex::tool_handlers::next_steps {}
namespace vantrex::values {}

namespace next_steps_requests {

namespace models = vantrex::models;
namespace module = vantrex::tool_handlers::next_steps;
namespace values = vantrex::values;

}  // namespace next_steps_requests

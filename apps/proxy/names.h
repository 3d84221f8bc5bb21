// Short names of the namespaces that the proxy uses.
#pragma once

#include "requests/names.h"

namespace next_steps_proxy {

namespace module = vantrex::tool_handlers::next_steps;
namespace requests = next_steps_requests;
namespace values = vantrex::values;

}  // namespace next_steps_proxy

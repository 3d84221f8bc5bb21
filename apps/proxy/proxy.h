// A proxy between a client, on the standard streams, and a tool server, which is started.
#pragma once

#include <string>
#include <vector>

#include "proxy/tool_list.h"

namespace next_steps_proxy {

// Passes lines between the client and the server that `command` starts, until the server ends. Returns its
// exit status, or 128 + n after signal n. Changes the signals of the process; call it once. Throws IoFailed
// and std::bad_alloc.
int run_proxy(const std::vector<std::string>& command, const ProxyOptions& options);

}  // namespace next_steps_proxy

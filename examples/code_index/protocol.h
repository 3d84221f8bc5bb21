// The methods of the Model Context Protocol that a server of tools has.
//
// The server keeps no state between requests. A client may begin with the handshake,
// "initialize", or name the protocol's version in each request, in "_meta".
#pragma once

#include <string_view>

#include "ctags_repository.h"
#include "json_rpc.h"

namespace code_index {

// The result of `method`, served from `index`. Throws RpcError.
JsonObject call_method(const CtagsRepository& index, std::string_view method, const JsonObject& params);

}  // namespace code_index

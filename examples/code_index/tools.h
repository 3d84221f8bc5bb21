// What each tool does.
#pragma once

#include <string_view>

#include "ctags_repository.h"
#include "vantrex/values/json_value.h"

namespace code_index {

// The finished answer of `tool`, which must be in the list, to arguments that fit it.
vantrex::values::JsonObject finished_answer(const CtagsRepository& index, std::string_view tool,
                                            const vantrex::values::JsonObject& arguments);

}  // namespace code_index

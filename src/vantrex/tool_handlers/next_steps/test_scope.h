// The scope of a step to recommended tests.
//
// The step covers what the answer is about: its files if it lists all of them, otherwise its base branch,
// otherwise its first files. With none of these the scope is empty and the step is left out: the tests tool
// would take the changes of the work tree, and a clean tree has none.
//
// Pure functions. Throw only std::bad_alloc; a field of the wrong type counts as absent.
#pragma once

#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The files that `response` is about, as strings without repeats: its own file, then the affected files or
// else the listed ones. If there are none, the request's path.
values::JsonList _answer_files(const values::JsonObject& response, const values::JsonObject& arguments);

// The arguments of the step: {"changed_files": [...]}, {"base_branch": ...} or {}.
values::JsonObject _tests_scope(const values::JsonObject& response, const values::JsonObject& arguments);

}  // namespace vantrex::tool_handlers::next_steps

// What a step to recommended tests runs on.
//
// Such a step covers what the answer is about: its files when it lists them
// all, else the branch base it compared against, else its first files. Without
// either the tests tool would take the work tree's changes, which on a clean
// tree are none, so the scope is empty and the step left out.
//
// Pure functions: they change nothing they are given and may run on any thread.
// Both throw only std::bad_alloc; a field of the wrong type counts as absent.
#pragma once

#include "vantrex/values/json_value.h"

namespace vantrex::tool_handlers::next_steps {

// The files that `response` is about, as strings without repeats: its own file
// first, then the affected or else the listed ones; the request's path only
// when the answer names no file.
values::JsonList _answer_files(const values::JsonObject& response, const values::JsonObject& arguments);

// The arguments of a step to recommended tests: {"changed_files": [...]},
// {"base_branch": ...} or {}.
values::JsonObject _tests_scope(const values::JsonObject& response, const values::JsonObject& arguments);

}  // namespace vantrex::tool_handlers::next_steps

// Answers of any size, and of shapes whose cost must stay linear in it.
#pragma once

#include <cstddef>

#include "answers.h"

namespace vantrex::bench {

Request flat_request(std::size_t bytes);       // file rows of about `bytes` in all
Request own_steps_request(std::size_t count);  // steps that the tool itself gave
Request fields_request(std::size_t count);     // fields of one object
Request nulls_request(std::size_t count);      // nulls in one list

// Ten files with their text, 8 KB each.
Request long_texts_request();

}  // namespace vantrex::bench

// A bar picture of the whole job, as SVG.
#pragma once

#include <ostream>

#include "report/results.h"

namespace vantrex::bench {

// Draws for every answer how long each library takes, on a scale of its own.
void draw_picture(std::ostream& out, const Results& results);

}  // namespace vantrex::bench

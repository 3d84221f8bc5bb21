// A bar picture of the lives, as SVG.
#pragma once

#include <ostream>
#include <string>

#include "report/results.h"

namespace vantrex::bench {

// A time with its unit, of three digits or so.
std::string time_text(double nanoseconds);

// Draws for every answer how long each contender takes, on a scale of its own.
void draw_picture(std::ostream& out, const Results& results);

}  // namespace vantrex::bench

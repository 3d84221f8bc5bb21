// The version of the library, as numbers and as a string literal.
#pragma once

// NOLINTBEGIN(cppcoreguidelines-macro-usage): preprocessor directives compare them.
#define NEXT_STEPS_VERSION_MAJOR 1  ///< Raised by an incompatible change.
#define NEXT_STEPS_VERSION_MINOR 0  ///< Raised by an addition.
#define NEXT_STEPS_VERSION_PATCH 0  ///< Raised by a bug fix.

#define NEXT_STEPS_DETAIL_TEXT(number) #number  ///< Internal: expands `number` and makes it a string.
/// Internal: joins the numbers with points.
#define NEXT_STEPS_DETAIL_VERSION(major, minor, patch) \
  NEXT_STEPS_DETAIL_TEXT(major) "." NEXT_STEPS_DETAIL_TEXT(minor) "." NEXT_STEPS_DETAIL_TEXT(patch)

/// The version as a string literal: "major.minor.patch".
#define NEXT_STEPS_VERSION \
  NEXT_STEPS_DETAIL_VERSION(NEXT_STEPS_VERSION_MAJOR, NEXT_STEPS_VERSION_MINOR, NEXT_STEPS_VERSION_PATCH)
// NOLINTEND(cppcoreguidelines-macro-usage)

// The version of the library, for the preprocessor and as a text.
#pragma once

#define NEXT_STEPS_VERSION_MAJOR 3  // rises with a change that a caller must follow
#define NEXT_STEPS_VERSION_MINOR 0  // rises with an addition
#define NEXT_STEPS_VERSION_PATCH 0  // rises with a repair

#define NEXT_STEPS_DETAIL_TEXT(number) #number  // internal
// Internal, too.
#define NEXT_STEPS_DETAIL_VERSION(major, minor, patch) \
  NEXT_STEPS_DETAIL_TEXT(major) "." NEXT_STEPS_DETAIL_TEXT(minor) "." NEXT_STEPS_DETAIL_TEXT(patch)

// The three numbers as a string literal, with points between them.
#define NEXT_STEPS_VERSION \
  NEXT_STEPS_DETAIL_VERSION(NEXT_STEPS_VERSION_MAJOR, NEXT_STEPS_VERSION_MINOR, NEXT_STEPS_VERSION_PATCH)

// NEXT_STEPS_API: marks what the library shows of itself when it is shared.
// Everything else is hidden there, and so are the internal headers' functions.
#pragma once

#ifdef __GNUC__
#define NEXT_STEPS_API __attribute__((visibility("default")))
#else
#define NEXT_STEPS_API
#endif

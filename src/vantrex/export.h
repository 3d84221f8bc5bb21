// NEXT_STEPS_API: marks what the library shows of itself where it is shared, which
// NEXT_STEPS_SHARED says. Everything else is hidden, and so is the whole of a static
// library in whatever it becomes a part of.
#pragma once

#if defined(NEXT_STEPS_SHARED) && defined(__GNUC__)
#define NEXT_STEPS_API __attribute__((visibility("default")))
#else
#define NEXT_STEPS_API
#endif
